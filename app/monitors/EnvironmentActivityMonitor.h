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
/// Everything is read two seconds after the last notification of a change, so that a burst of
/// notifications becomes one comparison. The sources exist only while they are followed: not while
/// the setting is off, and not during a sleep of the machine.
class EnvironmentActivityMonitor final : public SwitchedMonitor {
public:
    template <class Source>
    using Create = std::function<std::unique_ptr<Source>(std::function<void()> didChange)>;

    /// The functions that create the sources, none of which returns null, and the functions that
    /// read the volumes.
    struct Sources {
        Create<VolumeSource> volumes;
        Create<DisplaySource> displays;
        Create<ThermalSource> thermal;
        VolumeReading volumeReading;
    };

    EnvironmentActivityMonitor(const Surroundings& surroundings, Sources sources);
    ~EnvironmentActivityMonitor() override;

private:
    void follow(Beginning beginning) override;
    void pause() override;
    void schedule();
    void cancel();
    void observe();
    /// The present state without the volumes.
    EnvironmentHistory::State read() const;
    QCoro::Task<void> finish(EnvironmentHistory::State state, Date at, std::uint64_t number,
                             std::stop_token stop);

    const Sources sources;
    EnvironmentHistory history;
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
