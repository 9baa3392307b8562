#include "app/model/RecordingSwitch.h"

#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

namespace {

constexpr std::string_view modeKey = preference::recordingMode.name;

} // namespace

void RecordingSwitch::restore() {
    const auto stored = read(preferences, preference::recordingMode);
    const auto mode = json::fromRawValue<RecordingMode>(stored).value_or(RecordingMode::recording);
    state.recordingMode = mode;
    // That a pause had begun was lost along with the settings.
    if (preferences.isLost() && mode == RecordingMode::paused)
        preferences.note(preference::needsRecordingBaseline.name, true);
    preferences.note(modeKey, std::string(rawValue(mode)));
    preferences.remove("privateUntil");
}

bool RecordingSwitch::canChange() const {
    return state.mayBegin(Operation::switchingRecording);
}

void RecordingSwitch::set(RecordingMode mode) {
    const auto switching = state.operations().begin(Operation::switchingRecording);
    if (!switching || mode == *state.recordingMode)
        return;
    ++state.recordingGeneration;
    // Before the mode itself: were the program to end in between, the pause would be compared.
    if (mode == RecordingMode::paused)
        preferences.note(preference::needsRecordingBaseline.name, true);
    state.recordingMode = mode;
    // A pause is in force whether it can be stored or not, and stored as soon as that works.
    preferences.note(modeKey, std::string(rawValue(mode)));
    // The user has decided anew.
    preferences.remove(preference::settingsLost.name);
    if (mode == RecordingMode::paused)
        pause();
    else
        resume();
}

void RecordingSwitch::pause() {
    observations.abandon();
    live.stop();
}

void RecordingSwitch::resume() {
    // The next start goes by the stored mode.
    if (state.isEnding)
        return;
    live.startMemory();
    live.startActivityMonitors();
    tasks.start(flow.scan(false));
}

std::string_view RecordingSwitch::status() const {
    if (!state.canRecord())
        return "Paused";
    if (state.isAnyRunning(exclusions::captures))
        return "Observing…";
    return state.loaded() ? "Recording" : "Starting…";
}

std::string_view RecordingSwitch::menuSymbol() const {
    if (!state.canRecord())
        return "pause.circle";
    if (state.error->has_value() || state.activityError->has_value() || live.memoryFailure())
        return "exclamationmark.circle";
    return state.isAnyRunning(exclusions::captures) ? "arrow.triangle.2.circlepath"
                                                    : "clock.arrow.circlepath";
}

} // namespace tidemark
