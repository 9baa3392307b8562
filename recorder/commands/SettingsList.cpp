#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

std::string settingsList(const Preferences& preferences, const NoOptions&) {
    return settingCommands::list(preferences);
}

} // namespace

Command commands::settingsList() {
    return makeCommand<NoOptions, &tidemark::settingsList>({
        .name = "settings list",
        .group = CommandGroup::choices,
        .summary = "List the settings",
        .family = "List or change settings",
    });
}

} // namespace tidemark
