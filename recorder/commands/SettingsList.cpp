#include "core/capture/AdditionalPlaces.h"
#include "core/system/SystemFacts.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SettingsListOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{"json", &SettingsListOptions::json, "Print JSON instead of text"}};
    }
};

std::string settingsList(const SettingsReading& reading, const SettingsListOptions& options) {
    const auto files = AdditionalPlaces::suggestedConfigurations(SystemFacts::homeDirectory());
    return settingCommands::list(reading.preferences, reading.sources, files, options.json);
}

} // namespace

Command commands::settingsList() {
    return makeCommand<SettingsListOptions, &tidemark::settingsList>({
        .name = "settings list",
        .group = CommandGroup::choices,
        .summary = "List the settings",
        .family = "List or change settings",
    });
}

} // namespace tidemark
