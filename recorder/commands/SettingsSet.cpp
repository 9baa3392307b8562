#include "app/preferences/PreferenceKeys.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/RecordingChange.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SettingsSetOptions {
    std::string key;
    std::string value;

    static constexpr auto fields() {
        return std::tuple{Option{"key",
                                 &SettingsSetOptions::key,
                                 "The setting",
                                 {.isPositional = true, .isRequired = true}},
                          Option{"value",
                                 &SettingsSetOptions::value,
                                 "The new value",
                                 {.isPositional = true, .isRequired = true}}};
    }
};

QCoro::Task<std::string> settingsSet(CommandContext& context, const SettingsSetOptions& options) {
    const auto& [key, value] = options;
    // Changing the recording mode involves more than the stored value.
    if (const auto mode = json::fromRawValue<RecordingMode>(value);
        mode && key == preferenceKeys::recordingMode.name)
        co_return changeRecording(context, *mode);
    settingCommands::set(context.preferences(), key, value);
    co_return settingCommands::get(context.preferences(), context.recorder.presentSources(), key,
                                   false);
}

} // namespace

Command commands::settingsSet() {
    return makeCommand<SettingsSetOptions, &tidemark::settingsSet>(
        {
            .name = "settings set",
            .group = CommandGroup::choices,
            .summary = "Change one setting",
        },
        {.changesSettings = true});
}

} // namespace tidemark
