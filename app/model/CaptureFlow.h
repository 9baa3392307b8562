#pragma once

#include "app/model/CaptureProgress.h"
#include "app/model/ModelServices.h"
#include "app/model/ModelState.h"

namespace tidemark {

/// One capture from its trigger to the saved journal. A trigger that comes while the controller is
/// busy is dropped: whoever keeps asking, as the scheduler does, is its retry.
class CaptureFlow {
public:
    CaptureFlow(ModelState& shared, CaptureProgress& progress, const ModelServices& used)
        : state(shared), scanProgress(progress), services(used) {}

    /// Never fails: `error` of the state tells. A capture that outlives a change of the recording
    /// mode, or the controller, is dropped; after a change a fresh one follows at once.
    QCoro::Task<void> scan(bool allowDuringFolderSetup = false);
    /// Observes the machine without keeping anything. Throws what the observation throws.
    QCoro::Task<Snapshot> captureObservation();
    /// Saves a journal that no capture changed. True when that worked; false as well while
    /// anything else is under way.
    QCoro::Task<bool> commit(Journal journal);
    /// Writes a journal, which stays where it is meanwhile, and changes no state. Throws what the
    /// store throws.
    QCoro::Task<void> save(const Journal* journal);
    /// A capture if one is due.
    QCoro::Task<void> refreshIfNeeded(Date now);

    /// Cuts short what a running capture does, since nobody will keep it.
    void abandonCapture() { running.request_stop(); }

private:
    bool isWanted(std::uint64_t generation) const;
    QCoro::Task<void> captureAndSave(std::uint64_t generation);
    QCoro::Task<Snapshot> observed(std::stop_source source);
    QCoro::Task<void> addAdditionalReports(Snapshot* snapshot, std::stop_token stop);

    ModelState& state;
    CaptureProgress& scanProgress;
    const ModelServices& services;
    std::stop_source running{std::nostopstate};
};

} // namespace tidemark
