#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "core/activity/SleepHistory.h"
#include "core/activity/SystemActivityStore.h"

#include <QObject>
#include <functional>
#include <optional>
#include <vector>

namespace tidemark {

/// The single writer of the activity file: it makes the records of sleep and wake itself, and the
/// other monitors hand theirs to it. The file is read and written on a thread of its own, one
/// record after the other in the order in which they came, so that a slow disk holds up nothing.
/// What it began to write is written whatever comes: `stop` leaves it to be finished, the
/// destructor waits for it. Main thread only.
class PowerActivityMonitor final : public QObject {
    Q_OBJECT

public:
    using Records = std::vector<SystemActivity>;

    struct Callbacks {
        /// Asked before each record is taken.
        std::function<bool()> collectionAllowed = [] { return true; };
        /// What the file holds, oldest first: after each record that is on disk, also when it gets
        /// there only after `stop`.
        std::function<void(Records)> didRecord = [](const auto&) {};
        /// A record could not be written, and is lost.
        std::function<void(const std::exception&)> didFail = [](const auto&) {};
        /// The battery as it is now; absent without one.
        std::function<std::optional<BatteryObservation>()> battery = [] { return std::nullopt; };
    };

    /// `url` is the file. The centre, which tells of sleep and wake, and the clock outlive this.
    PowerActivityMonitor(std::filesystem::path url, NotificationCenter& center, AppClock& clock,
                         Callbacks callbacks, FolderGuard guard = {});
    ~PowerActivityMonitor() override;

    /// Follows the machine and reads the file; what is recorded meanwhile is written after that.
    /// Gives what the file holds; absent when `stop` came meanwhile, or when it has been started
    /// before. Throws `FileError` when the file can't be read: nothing is
    /// recorded then, and the file stays as it is.
    QCoro::Task<std::optional<Records>> start();
    /// Follows nothing and takes no records any more. Those that still wait for the file to be read
    /// are dropped.
    void stop();
    /// Between `start` and `stop`, whether the file has been read yet or not.
    bool isStarted() const { return phase != Phase::stopped; }

    /// Takes a record to be written. Ignored unless it is started and recording is allowed.
    void record(SystemActivity activity);
    /// Waits until what was taken so far is on disk, or has failed to get there.
    QCoro::Task<void> writer();

private:
    enum class Phase { stopped, opening, following };

    void follow(Notification notification, SystemActivity::Kind kind);
    QCoro::Task<void> append(SystemActivity activity);
    /// Runs `work` on the thread of the file, and copies there what the file holds then: a copy of
    /// so many records would be felt in the event loop.
    template <class Work>
    QCoro::Task<Records> onFile(Work work);

    NotificationCenter& notifications;
    AppClock& time;
    const Callbacks calls;
    SleepHistory sleepHistory;
    std::vector<NotificationCenter::Token> tokens;
    /// What came while the file was being read.
    std::vector<SystemActivity> early;
    Phase phase = Phase::stopped;
    /// Grows with every start and stop: what began under another number is stale.
    std::uint64_t generation = 0;
    /// Used by the thread alone.
    SystemActivityStore store;
    WorkerPool thread{1};
    TaskScope tasks;
};

} // namespace tidemark
