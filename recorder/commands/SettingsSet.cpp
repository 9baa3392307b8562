#include "app/preferences/PreferenceKeys.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/RecordingChange.h"
#include "recorder/SettingCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct Options {
    std::string key;
    std::string value;

    static constexpr auto fields() {
        return std::tuple{
            Option{"key", &Options::key, "The setting", {.isPositional = true, .isRequired = true}},
            Option{"value",
                   &Options::value,
                   "The new value",
                   {.isPositional = true, .isRequired = true}}};
    }
};

/// Tells whoever has read the setting already.
void applySetting(const CommandContext& context, std::string_view key) {
    const auto& preferences = context.preferences();
    auto& model = context.model();
    if (key == preference::captureSchedule.name)
        model.setCaptureSchedule(
            *json::fromRawValue<CaptureSchedule>(read(preferences, preference::captureSchedule)));
    if (key == preference::historyTimeWindow.name)
        model.history().setRange(read(preferences, preference::historyTimeWindow));
    if (key == preference::historyCustomWindowDays.name)
        model.history().setCustomWindowDays(read(preferences, preference::historyCustomWindowDays));
    auto& memory = context.recorder.memoryHistory();
    if (key == preference::memoryClipboardDays.name)
        memory.setClipboardDays(read(preferences, preference::memoryClipboardDays));
    else if (key.starts_with("memory"))
        memory.reconfigure();
}

QCoro::Task<std::string> settingsSet(CommandContext& context, const Options& options) {
    const auto& [key, value] = options;
    // More than a stored value changes with this one.
    if (const auto mode = json::fromRawValue<RecordingMode>(value);
        mode && key == preference::recordingMode.name)
        co_return changeRecording(context, *mode);
    settingCommands::set(context.preferences(), key, value);
    applySetting(context, key);
    co_return settingCommands::get(context.preferences(), Recorder::sources(), key, false);
}

} // namespace

Command commands::settingsSet() {
    return makeCommand<Options, &tidemark::settingsSet>(
        {
            .name = "settings set",
            .group = CommandGroup::choices,
            .summary = "Change one setting",
        },
        {.changesSettings = true});
}

} // namespace tidemark
