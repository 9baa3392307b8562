#pragma once

#include "app/base/AppClock.h"
#include "app/base/MainThreadCalls.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "app/ports/VolumeSource.h"
#include "core/activity/EnvironmentHistory.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>

namespace tidemark {

/// Reads the mounted volumes with their details, on a thread of its own. Main thread only; one
/// reading begins when the previous one has ended.
///
/// The server of a network volume may never answer. So each volume has a limited time; then it is
/// listed without details and its thread is abandoned: nothing waits for it, and the volume is not
/// read again before that thread has returned.
class VolumeObservationReader {
public:
    /// Seconds for the list of all volumes, and for the details of one.
    static constexpr double mostTime = 2;

    /// `clock` must outlive this object.
    VolumeObservationReader(VolumeReading reading, AppClock& clock);
    /// Does not wait for abandoned threads.
    ~VolumeObservationReader();
    VolumeObservationReader(const VolumeObservationReader&) = delete;
    VolumeObservationReader& operator=(const VolumeObservationReader&) = delete;

    /// The volumes by their mount points. Absent when they can't be listed, after `end`, and when
    /// `stop` was requested, which is checked before each volume.
    QCoro::Task<std::optional<EnvironmentHistory::Entries>> read(std::stop_token stop);
    /// Makes running and further readings end at once without a result.
    void end() { tasks.requestStop(); }

private:
    using Work = std::function<void()>;

    QCoro::Task<std::optional<EnvironmentHistory::Entries>> readAll(std::stop_token stop);
    QCoro::Task<std::optional<VolumeContext>> details(std::filesystem::path path);
    /// Calls `work` on the thread and then `use` on the main thread. Returns false when that took
    /// too long, and after `end`; `use` is called even then, when `work` has returned. When no
    /// thread can be started, calls only `use` and returns false. Neither may refer to anything
    /// that this object does not keep alive.
    QCoro::Task<bool> inTime(Work work, Work use);

    const VolumeReading reading;
    AppClock& clock;
    /// Replaced when its thread does not return in time.
    std::unique_ptr<WorkerPool> thread;
    /// Lets the threads call functions on the main thread while this object exists.
    MainThreadCalls calls;
    /// The volumes whose threads have not returned.
    std::set<std::filesystem::path> stuck;
    bool isReading = false;
    std::stop_source readingEnded;
    TaskScope tasks;
};

} // namespace tidemark
