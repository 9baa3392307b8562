#include "recorder/RecordingChange.h"

#include "app/preferences/PreferenceKeys.h"
#include "recorder/Recorder.h"

namespace tidemark {

std::string changeRecording(const CommandContext& context, RecordingMode mode) {
    auto& preferences = context.preferences();
    const bool wasPaused = context.isRunning ? !context.state().canRecord()
                                             : read(preferences, preference::recordingMode)
                                                   == rawValue(RecordingMode::paused);
    if (context.isRunning) {
        if (!context.model().canChangeRecording())
            throw Error("Recording can't be changed at this moment; try again.");
        context.model().setRecordingMode(mode);
    } else {
        // A recorder that starts later goes by this.
        if (mode == RecordingMode::paused)
            preferences.note(preference::needsRecordingBaseline.name, true);
        preferences.set(preference::recordingMode.name, std::string(rawValue(mode)));
    }
    return mode == RecordingMode::paused ? "Recording is paused.\n"
           : wasPaused                   ? "Recording, with a new starting point.\n"
                                         : "Recording was not paused.\n";
}

} // namespace tidemark
