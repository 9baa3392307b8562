#pragma once

#include "app/monitors/PowerActivityMonitor.h"
#include "app/monitors/SwitchedMonitor.h"

#include <memory>
#include <vector>

/// Creates the monitors of live activity with the adapters of this system. Each system defines
/// `create` in one source file, the only one that chooses these adapters.
namespace tidemark::systemMonitors {

struct Monitors {
    /// In the order in which they are started and stopped. They follow nothing before they are
    /// started.
    std::vector<std::unique_ptr<ActivityMonitor>> all;
    /// Returns the present state of the battery; absent while its history is turned off and without
    /// one. Uses the monitors, so it must not be called after their end.
    PowerActivityMonitor::ReadBattery battery = PowerActivityMonitor::noBattery;
};

Monitors create(const SwitchedMonitor::Surroundings& surroundings);

} // namespace tidemark::systemMonitors
