#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/capture/FolderAccess.h"
#include "app/model/CaptureProgress.h"
#include "app/preferences/Preferences.h"
#include "core/capture/ObservationOptions.h"
#include "core/records/Snapshot.h"

#include <QCoroTask>
#include <functional>
#include <stop_token>

namespace tidemark {

/// Takes one observation of the machine; throws when it can't. One that is stopped may give an
/// incomplete snapshot, which is not kept.
using Observe = std::function<QCoro::Task<Snapshot>(ObservationOptions, std::stop_token)>;

/// One observation from the folders that it opens to the whole snapshot, without keeping anything.
/// Main thread only.
class ObservationFlow {
public:
    /// All that is given by reference outlives this.
    struct Setup {
        FolderAccess& folders;
        const Preferences& preferences;
        AppClock& clock;
        CaptureProgress& progress;
        const TaskScope& tasks;
        std::filesystem::path home;
        Observe observe;
    };

    explicit ObservationFlow(Setup setup) : used(std::move(setup)) {}

    /// Throws what the observation throws.
    QCoro::Task<Snapshot> take();
    /// Cuts short what runs, since nobody will keep it.
    void abandon() { running.request_stop(); }

private:
    QCoro::Task<Snapshot> observed(std::stop_source source);
    QCoro::Task<void> addAdditionalReports(Snapshot* snapshot, std::stop_token stop);

    const Setup used;
    std::stop_source running{std::nostopstate};
};

} // namespace tidemark
