#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/LiveServices.h"

namespace tidemark {

/// Turns all recording off and on. What changed while it was off is never reported as a change:
/// the first capture afterwards is a new baseline, even if the program ended in between.
class RecordingSwitch {
public:
    /// All of these outlive this.
    RecordingSwitch(ModelState& state, ObservationFlow& observations, CaptureFlow& flow,
                    LiveServices& live, Preferences& preferences, const TaskScope& tasks)
        : state(state), observations(observations), flow(flow), live(live),
          preferences(preferences), tasks(tasks) {}

    /// Takes over the stored mode, in whatever words an earlier release wrote it.
    void restore();
    /// Not while the journal is being changed by something else than a capture.
    bool canChange() const;
    void set(RecordingMode mode);

    /// For people: "Paused", "Observing…", "Recording" or "Starting…".
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
