#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SettingsGetOptions {
    std::string key;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{"key",
                                 &SettingsGetOptions::key,
                                 "The setting",
                                 {.isPositional = true, .isRequired = true}},
                          Option{"json", &SettingsGetOptions::json, "Print JSON instead of text"}};
    }
};

std::string settingsGet(const SettingsReading& reading, const SettingsGetOptions& options) {
    return settingCommands::get(reading.preferences, reading.sources, options.key, options.json);
}

} // namespace

Command commands::settingsGet() {
    return makeCommand<SettingsGetOptions, &tidemark::settingsGet>({
        .name = "settings get",
        .group = CommandGroup::choices,
        .summary = "Show one setting",
    });
}

} // namespace tidemark
