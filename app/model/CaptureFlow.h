#pragma once

#include "app/model/JournalFile.h"
#include "app/model/ModelState.h"
#include "app/model/ObservationFlow.h"

namespace tidemark {

/// One capture from its trigger to the saved journal. A trigger that comes while the controller is
/// busy is dropped: whoever keeps asking, as the scheduler does, is its retry. Main thread only.
class CaptureFlow {
public:
    /// All of these outlive this.
    CaptureFlow(ModelState& state, ObservationFlow& observations, JournalFile& file,
                Preferences& preferences, AppClock& clock, const TaskScope& tasks)
        : state(state), observations(observations), file(file), preferences(preferences),
          clock(clock), tasks(tasks) {}

    /// Never fails: `error` of the state tells. A capture that outlives a change of the recording
    /// mode, or the controller, is dropped; after a change a fresh one follows at once.
    QCoro::Task<void> scan(bool allowDuringFolderSetup = false);
    /// Saves a journal that no capture changed. True when that worked; false as well while
    /// anything else is under way.
    QCoro::Task<bool> commit(Journal journal);
    /// A capture if one is due.
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
};

} // namespace tidemark
