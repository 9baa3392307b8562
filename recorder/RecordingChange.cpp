#include "recorder/RecordingChange.h"

#include "app/preferences/PreferenceKeys.h"
#include "recorder/Recorder.h"

namespace tidemark {

namespace {

/// Stores the mode for the next recorder. Throws `Error` when that fails.
void storeForNextRecorder(Preferences& preferences, RecordingMode mode, bool wasPaused) {
    // `wasPaused` is also true after the settings were lost, although no pause is stored then.
    if (mode == RecordingMode::paused || wasPaused)
        preferences.note(preferenceKeys::needsRecordingBaseline.name, true);
    if (!preferences.set(preferenceKeys::recordingMode.name, std::string(rawValue(mode))))
        throw Error(preferences.problem().value_or("The recording mode could not be stored."));
    // Removed only after the mode is stored: otherwise a failure could end the pause that is
    // assumed after lost settings.
    preferences.remove(preferenceKeys::settingsLost.name);
}

} // namespace

std::string changeRecording(const CommandContext& context, RecordingMode mode) {
    auto& preferences = context.preferences();
    const bool wasPaused = context.isRunning ? !context.state().canRecord()
                                             : read(preferences, preferenceKeys::recordingMode)
                                                   == rawValue(RecordingMode::paused);
    if (context.isRunning) {
        if (!context.model().canChangeRecording())
            throw Error("Recording can't be changed at this moment; try again.");
        context.model().setRecordingMode(mode);
    } else {
        storeForNextRecorder(preferences, mode, wasPaused);
    }
    if (mode == RecordingMode::paused)
        return "Recording is paused.\n";
    if (!wasPaused)
        return "Recording was not paused.\n";
    return context.isRunning ? "Recording, with a new starting point.\n"
                             : "Recording is no longer paused, and begins anew when a recorder "
                               "runs (tidemark run).\n";
}

} // namespace tidemark
