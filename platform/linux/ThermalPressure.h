#pragma once

#include "platform/linux/ThermalZones.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// Derives the thermal pressure of the machine from successive readings. The kernel has no such
/// state:
///
///     critical  a zone is at a hot trip, or less than 5 °C below a critical one
///     serious   a zone is at a passive trip, or the processor is being slowed down
///     fair      a zone is at an active trip
///     nominal   there are zones, and none of this holds
///
/// Temperatures vary by the second, so a higher state counts once it has lasted for ten seconds,
/// and a lower one after a minute clearly below the trips. The caller passes monotonic seconds.
class ThermalPressure {
public:
    static constexpr double riseTime = 10;
    static constexpr double fallTime = 60;

    /// Takes one reading; `isTooHot` is what a power daemon reports.
    void receive(const ThermalZones& reading, bool isTooHot, double now);

    /// A name of `ThermalState`; absent before a reading and while there is no zone.
    std::optional<std::string_view> state() const;
    /// True while another state is waiting to count; then it is worth reading again soon.
    bool isChanging() const { return rising.has_value() || falling.has_value(); }

private:
    using Level = std::size_t;
    struct Pending {
        double since = 0;
        /// Of the states that were read since then, the one nearest to the present state.
        Level level = 0;
    };

    Level levelOf(const ThermalZones& reading, bool isSlowedDown, bool isLeaving) const;
    bool isValid(const ThermalZones::Zone& zone, const ThermalZones::Trip& trip) const;
    void noteFirstTemperatures(const ThermalZones& reading);

    std::optional<Level> current;
    std::optional<Pending> rising;
    std::optional<Pending> falling;
    std::optional<std::int64_t> lastThrottled;
    /// The temperature of each zone at its first reading.
    std::map<std::string, double> temperaturesAtFirst;
};

} // namespace tidemark
