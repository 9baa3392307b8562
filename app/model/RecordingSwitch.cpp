#include "app/model/RecordingSwitch.h"

#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

namespace {

constexpr std::string_view modeKey = preferenceKeys::recordingMode.name;

} // namespace

void RecordingSwitch::restore() {
    const auto stored = read(preferences, preferenceKeys::recordingMode);
    const auto mode = json::fromRawValue<RecordingMode>(stored).value_or(RecordingMode::recording);
    state.recordingMode = mode;
    // When the settings were lost, the mode is read as paused, and the note that a pause began was
    // lost as well.
    if (preferences.isLost() && mode == RecordingMode::paused)
        preferences.note(preferenceKeys::needsRecordingBaseline.name, true);
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
    // Stored before the mode: in the opposite order, changes during the pause would be reported if
    // the program ended in between.
    if (mode == RecordingMode::paused)
        preferences.note(preferenceKeys::needsRecordingBaseline.name, true);
    state.recordingMode = mode;
    // The mode takes effect even if it can't be stored now, and is stored with the next change.
    preferences.note(modeKey, std::string(rawValue(mode)));
    // The choice of the user is known again.
    preferences.remove(preferenceKeys::settingsLost.name);
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
    // The program is ending; its next start records again, by the stored mode.
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
