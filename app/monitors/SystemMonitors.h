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
    /// Reads the present state of the battery. Its result is absent on a machine without a battery
    /// and while the history of the battery is turned off. Uses the monitors, so it must not be
    /// called after they were destroyed.
    PowerActivityMonitor::ReadBattery battery = PowerActivityMonitor::noBattery;
};

Monitors create(const SwitchedMonitor::Surroundings& surroundings);

} // namespace tidemark::systemMonitors
