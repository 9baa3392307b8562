#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// One reading of the thermal zones, the cooling devices and the throttle counters of the kernel
/// (https://docs.kernel.org/driver-api/thermal/sysfs-api.html). Temperatures in °C.
struct ThermalZones {
    enum class TripKind {
        /// A fan starts.
        active,
        /// The processor is slowed down.
        passive,
        hot,
        critical,
    };
    struct Trip {
        TripKind kind = TripKind::active;
        double temperature = 0;
        /// How far below the trip the temperature must fall to leave it.
        double hysteresis = 0;
    };
    struct Zone {
        /// The name of its folder.
        std::string name;
        double temperature = 0;
        std::vector<Trip> trips;
    };

    /// The enabled and readable zones of the processor and the case.
    std::vector<Zone> zones;
    /// True when a cooling device slows the processor down at present.
    bool isSlowedDown = false;
    /// Milliseconds that the processors have been throttled since the start of the machine.
    std::int64_t throttled = 0;

    /// Reads the files below `sys`, which is /sys. Zones with values that can't be true are left
    /// out, and so are trips that are not set. A zone may be read through the firmware, which takes
    /// some milliseconds.
    static ThermalZones read(const std::filesystem::path& sys);
};

} // namespace tidemark
