#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"
#include "app/monitors/ActivityMonitor.h"
#include "app/monitors/SettlingTimer.h"
#include "app/monitors/VolumeObservationReader.h"
#include "app/ports/DisplaySource.h"
#include "app/ports/ThermalSource.h"
#include "app/preferences/Preferences.h"
#include "core/activity/EnvironmentHistory.h"

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

namespace tidemark {

/// Records volumes that are mounted and unmounted, displays that are connected, disconnected or
/// configured, and thermal pressure, while the setting is on. Main thread only.
///
/// Each notification of a change causes a reading of everything two seconds after the last one, so
/// that a burst of them becomes one comparison. The sources exist only while they are followed: not
/// while the setting is off, and not during a sleep of the machine.
class EnvironmentActivityMonitor final : public QObject, public ActivityMonitor {
    Q_OBJECT

public:
    template <class Source>
    using Create = std::function<std::unique_ptr<Source>(std::function<void()> didChange)>;

    /// The constructor's arguments. References must outlive the monitor.
    struct Setup {
        Preferences& preferences;
        /// Posts the sleep and wake of the machine.
        NotificationCenter& workspaceCenter;
        /// Create the sources; may return null.
        Create<VolumeSource> volumes;
        Create<DisplaySource> displays;
        Create<ThermalSource> thermal;
        VolumeReading volumeReading;
        AppClock& clock = AppClock::system();
    };

    explicit EnvironmentActivityMonitor(Setup setup);
    ~EnvironmentActivityMonitor() override;

    void start(Record record) override;
    void stop() override;

private:
    /// Displays and thermal state at one moment.
    struct Reading {
        Date at;
        EnvironmentHistory::Entries displays;
        std::string thermal;
        /// False while they are not known; they are then empty and mild.
        bool hasDisplays = false;
        bool hasThermal = false;
    };

    bool isEnabled() const;
    bool isWanted() const;
    void applySetting();
    void subscribe();
    void unsubscribe();
    void sleep();
    void wake();
    void schedule();
    void cancel();
    void observe();
    Reading read() const;
    QCoro::Task<void> finish(Reading reading, std::uint64_t number, std::stop_token stop);
    void compare(Reading reading, EnvironmentHistory::Entries volumes);

    const Setup setup;
    Record record;
    bool sleeping = false;
    EnvironmentHistory history;
    /// Whether the last comparison had displays and a thermal state.
    bool hadDisplays = false;
    bool hadThermal = false;
    /// Incremented by everything that makes a running reading outdated.
    std::uint64_t generation = 0;
    std::stop_source running{std::nostopstate};
    std::unique_ptr<VolumeSource> volumes;
    std::unique_ptr<DisplaySource> displays;
    std::unique_ptr<ThermalSource> thermal;
    std::vector<NotificationCenter::Token> tokens;
    VolumeObservationReader volumeReader;
    TaskScope tasks;
    SettlingTimer settling{setup.clock, tasks};
};

} // namespace tidemark
