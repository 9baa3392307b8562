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

/// Takes one observation of the machine; throws on failure. After a stop the snapshot may be
/// incomplete and is not kept.
using Observe = std::function<QCoro::Task<Snapshot>(ObservationOptions, std::stop_token)>;

/// Takes one complete snapshot: opens the folders, observes the machine and adds the
/// problems in opening them, the operating system, the additional reports and the interval of the
/// schedule. Keeps nothing. Main thread only.
class ObservationFlow {
public:
    /// References must outlive this object.
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

    /// Throws as the observation does.
    QCoro::Task<Snapshot> take();
    /// Stops a running observation, which will not be kept.
    void abandon() { running.request_stop(); }

private:
    QCoro::Task<Snapshot> observed(std::stop_source source);
    QCoro::Task<void> addAdditionalReports(Snapshot* snapshot, std::stop_token stop);

    const Setup used;
    std::stop_source running{std::nostopstate};
};

} // namespace tidemark
