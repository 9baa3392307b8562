#include "app/model/RecordingSwitch.h"

#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

namespace {

constexpr std::string_view modeKey = preference::recordingMode.name;

} // namespace

void RecordingSwitch::restore() {
    const auto stored = read(services.preferences, preference::recordingMode);
    const auto mode = json::fromRawValue<RecordingMode>(stored).value_or(RecordingMode::recording);
    state.recordingMode = mode;
    // That a pause had begun was lost along with the settings.
    if (services.preferences.isLost() && mode == RecordingMode::paused)
        services.preferences.note(preference::needsRecordingBaseline.name, true);
    services.preferences.note(modeKey, std::string(rawValue(mode)));
    services.preferences.remove("privateUntil");
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
        services.preferences.note(preference::needsRecordingBaseline.name, true);
    state.recordingMode = mode;
    // A pause is in force whether it can be stored or not, and stored as soon as that works.
    services.preferences.note(modeKey, std::string(rawValue(mode)));
    // The user has decided anew.
    services.preferences.remove(preference::settingsLost.name);
    if (mode == RecordingMode::paused)
        pause();
    else
        resume();
}

void RecordingSwitch::pause() {
    flow.abandonCapture();
    if (services.live)
        services.live->stop();
}

void RecordingSwitch::resume() {
    // The next start goes by the stored mode.
    if (state.isEnding)
        return;
    if (services.live) {
        services.live->startMemory();
        services.live->startActivityMonitors();
    }
    services.tasks.start(flow.scan(false));
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
    const bool memoryFailed = services.live && services.live->memoryFailure();
    if (state.error->has_value() || state.activityError->has_value() || memoryFailed)
        return "exclamationmark.circle";
    return state.isAnyRunning(exclusions::captures) ? "arrow.triangle.2.circlepath"
                                                    : "clock.arrow.circlepath";
}

} // namespace tidemark
