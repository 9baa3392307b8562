#pragma once

#include "app/monitors/SwitchedMonitor.h"
#include "app/monitors/VolumeObservationReader.h"
#include "app/ports/DisplaySource.h"
#include "app/ports/ThermalSource.h"
#include "core/activity/EnvironmentHistory.h"

#include <functional>
#include <memory>
#include <stop_token>

namespace tidemark {

/// Records volumes that are mounted and unmounted, displays that are connected, disconnected or
/// configured, and thermal pressure. Main thread only.
///
/// Each notification of a change causes a reading of everything two seconds after the last one, so
/// that a burst of them becomes one comparison. The sources exist only while they are followed: not
/// while the setting is off, and not during a sleep of the machine.
class EnvironmentActivityMonitor final : public SwitchedMonitor {
public:
    template <class Source>
    using Create = std::function<std::unique_ptr<Source>(std::function<void()> didChange)>;

    /// Create the sources; do not return null.
    struct Sources {
        Create<VolumeSource> volumes;
        Create<DisplaySource> displays;
        Create<ThermalSource> thermal;
        VolumeReading volumeReading;
    };

    EnvironmentActivityMonitor(const Surroundings& surroundings, Sources sources);
    ~EnvironmentActivityMonitor() override;

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

    void follow(Beginning beginning) override;
    void pause() override;
    void schedule();
    void cancel();
    void observe();
    Reading read() const;
    QCoro::Task<void> finish(Reading reading, std::uint64_t number, std::stop_token stop);
    void compare(Reading reading, EnvironmentHistory::Entries volumes);

    const Sources sources;
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
    VolumeObservationReader volumeReader;
    SettlingTimer settling{clock(), tasks};
};

} // namespace tidemark
