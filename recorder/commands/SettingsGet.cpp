#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct Options {
    std::string key;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"key", &Options::key, "The setting", {.isPositional = true, .isRequired = true}},
            Option{"json", &Options::json, "Print JSON instead of text"}};
    }
};

std::string settingsGet(const SettingsReading& reading, const Options& options) {
    return settingCommands::get(reading.preferences, reading.sources, options.key, options.json);
}

} // namespace

Command commands::settingsGet() {
    return makeCommand<Options, &tidemark::settingsGet>({
        .name = "settings get",
        .group = CommandGroup::choices,
        .summary = "Show one setting",
    });
}

} // namespace tidemark
