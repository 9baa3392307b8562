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

/// The only writer of the activity file. It makes the records of sleep and wake itself; other
/// monitors pass theirs to `record`. The file is read and written on a thread of its own, one
/// record after the other, so that a slow disk blocks nothing. Writing continues after `stop`, and
/// the destructor waits for it. Main thread only.
class PowerActivityMonitor final : public QObject {
    Q_OBJECT

public:
    using Records = std::vector<Shared<SystemActivity>>;
    using ReadBattery = std::function<QCoro::Task<std::optional<BatteryObservation>>()>;

    static QCoro::Task<std::optional<BatteryObservation>> noBattery() { co_return std::nullopt; }

    struct Callbacks {
        /// Whether recording is allowed; asked before each record is accepted.
        std::function<bool()> collectionAllowed = [] { return true; };
        /// Called with all records of the file, oldest first, after each record that was written,
        /// also after `stop`.
        std::function<void(Records)> didRecord = [](const auto&) {};
        /// Called when a record could not be written and is lost.
        std::function<void(const std::exception&)> didFail = [](const auto&) {};
        /// Reads the present state of the battery; the result is absent without a battery. After a
        /// wake this may take some seconds.
        ReadBattery battery = noBattery;
    };

    /// `url` is the file. `notifications`, which posts sleep and wake, and `clock` must outlive
    /// this object.
    PowerActivityMonitor(std::filesystem::path url, NotificationCenter& notifications,
                         AppClock& clock, Callbacks callbacks, FolderGuard guard = {});
    ~PowerActivityMonitor() override;

    /// Starts to follow the machine and reads the file; records made meanwhile are written after
    /// that. Returns the records of the file; absent when `stop` was called meanwhile or the
    /// monitor was started already. Throws `FileError` when the file can't be read; then nothing is
    /// recorded and the file is unchanged.
    QCoro::Task<std::optional<Records>> start();
    /// Stops following and accepting records. Records that wait for the file to be read are
    /// dropped.
    void stop();
    /// True between `start` and `stop`, also while the file is being read.
    bool isStarted() const { return phase != Phase::stopped; }

    /// Writes a record. Ignored unless started and recording is allowed.
    void record(SystemActivity activity);
    /// Waits until all accepted records are written or have failed. A record that waits for the
    /// battery is made without it.
    QCoro::Task<void> writer();

private:
    enum class Phase { stopped, opening, following };

    /// A sleep or wake whose record waits for the reading of the battery.
    struct Observed {
        SystemActivity::Kind kind{};
        Date at;
    };

    void follow(Notification notification, SystemActivity::Kind kind);
    QCoro::Task<void> readBattery(std::uint64_t number);
    /// Makes the record of `observed`, if there is one.
    void finish(std::optional<BatteryObservation> battery);
    QCoro::Task<void> append(SystemActivity activity);
    /// Runs `work` on the thread of the file and returns the records of the file after it.
    template <class Work>
    QCoro::Task<Records> onFile(Work work);

    NotificationCenter& notifications;
    AppClock& clock;
    const Callbacks callbacks;
    SleepHistory sleepHistory;
    std::optional<Observed> observed;
    /// Incremented with each reading of the battery.
    std::uint64_t batteryReadings = 0;
    std::vector<NotificationCenter::Token> tokens;
    /// Records made while the file is being read.
    std::vector<SystemActivity> early;
    Phase phase = Phase::stopped;
    /// Incremented by every start and stop: work that began under another number is stale.
    std::uint64_t generation = 0;
    /// Only used on the thread of the file.
    SystemActivityStore store;
    WorkerPool thread{1};
    TaskScope tasks;
};

} // namespace tidemark
