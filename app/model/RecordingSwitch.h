#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/LiveServices.h"

namespace tidemark {

/// Pauses and resumes all recording. Changes during a pause are not reported: the first capture
/// after it is a new starting point, even if the program ended in between.
class RecordingSwitch {
public:
    /// The arguments must outlive this object.
    RecordingSwitch(ModelState& state, ObservationFlow& observations, CaptureFlow& flow,
                    LiveServices& live, Preferences& preferences, const TaskScope& tasks)
        : state(state), observations(observations), flow(flow), live(live),
          preferences(preferences), tasks(tasks) {}

    /// Reads the stored mode, also in the form of an earlier release.
    void restore();
    /// False while the history is being read, saved or imported into, and while a snapshot is being
    /// named. A running capture does not prevent the change.
    bool canChange() const;
    void set(RecordingMode mode);

    /// The status text: "Paused", "Observing…", "Recording" or "Starting…".
    std::string_view status() const;
    /// The name of the symbol in the menu bar.
    std::string_view menuSymbol() const;

private:
    void pause();
    void resume();

    ModelState& state;
    ObservationFlow& observations;
    CaptureFlow& flow;
    LiveServices& live;
    Preferences& preferences;
    const TaskScope& tasks;
};

} // namespace tidemark
