#include "recorder/Commands.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct Options {
    std::string key;

    static constexpr auto fields() {
        return std::tuple{Option{
            "key", &Options::key, "The setting", {.isPositional = true, .isRequired = true}}};
    }
};

std::string settingsGet(const Preferences& preferences, const Options& options) {
    return settingCommands::get(preferences, options.key);
}

} // namespace

Command commands::settingsGet() {
    return makeCommand<Options, &tidemark::settingsGet>({
        .name = "settings get",
        .group = CommandGroup::choices,
        .summary = "Tell one setting",
    });
}

} // namespace tidemark
