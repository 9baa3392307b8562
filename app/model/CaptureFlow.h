#pragma once

#include "app/model/JournalFile.h"
#include "app/model/ModelState.h"
#include "app/model/ObservationFlow.h"

namespace tidemark {

/// Takes a capture and saves it. The journal in memory is replaced only after the new one is on
/// disk, so that memory and disk agree whatever fails. A capture requested while an operation
/// runs that excludes captures (`exclusions`) is dropped; the scheduler asks again a minute later.
/// Main thread only.
class CaptureFlow {
public:
    /// The arguments must outlive this object.
    CaptureFlow(ModelState& state, ObservationFlow& observations, JournalFile& file,
                Preferences& preferences, AppClock& clock, const TaskScope& tasks)
        : state(state), observations(observations), file(file), preferences(preferences),
          clock(clock), tasks(tasks) {}

    /// Does not throw: sets `error` of the state. A capture is dropped when recording is paused
    /// or resumed, or the program ends, before its snapshot is complete. When recording was resumed
    /// during a capture, a new one follows at once.
    QCoro::Task<void> scan(bool allowDuringFolderSetup = false);
    /// Stops a running capture, of which nothing is kept. Does nothing when none is running; a
    /// capture that is already being saved is saved nevertheless.
    void cancel();
    /// Saves a journal with a change that is not from a capture. False when another operation is
    /// running, or when that failed, which sets `error` of the state.
    QCoro::Task<bool> commit(Journal journal);
    /// Takes a capture if one is due.
    QCoro::Task<void> refreshIfNeeded(Date now);

private:
    bool isWanted(std::uint64_t generation) const;
    QCoro::Task<void> captureAndSave(std::uint64_t generation);

    ModelState& state;
    ObservationFlow& observations;
    JournalFile& file;
    Preferences& preferences;
    AppClock& clock;
    const TaskScope& tasks;
    /// True when the user has cancelled the running capture.
    bool isCancelled = false;
};

} // namespace tidemark
