#pragma once

#include "core/records/SystemActivity.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Turns successive states of volumes, displays and thermal pressure into records of their
/// differences. Has no clock: each call takes the time.
class EnvironmentHistory {
public:
    /// Seconds that the caller waits after the last notification of a change before it reads the
    /// state.
    static constexpr double delay = 2;

    /// Volumes by mount point, or displays by the system's display number as text.
    using Entries = std::map<std::string, EnvironmentActivity>;

    /// Takes the whole state; `thermal` is a name of `ThermalState`. Returns records of the
    /// differences from the previous state, all dated `at`: volumes and displays that were added or
    /// removed, displays with another configuration, each in the order of their keys, then thermal
    /// pressure. The first call returns none.
    std::vector<SystemActivity> receive(Entries volumes, Entries displays, std::string thermal,
                                        Date at);
    /// Makes the next state a new starting point.
    void reset() { *this = {}; }

private:
    struct Snapshot {
        Entries volumes;
        Entries displays;
        std::string thermal;
    };

    std::vector<SystemActivity> changes(const Snapshot& before, const Snapshot& after,
                                        Date at) const;

    std::optional<Snapshot> last;
    /// When the thermal state became elevated; absent when that was not observed.
    std::optional<Date> elevatedSince;
};

/// The entry of a volume mounted at `path`, which gives it its name when the volume has none that
/// can be read.
EnvironmentActivity volumeEntry(std::string path, std::optional<VolumeContext> volume);

/// The entry of a display, with its mode if that can be read. A refresh rate that is not above 0
/// becomes absent, and a scale that is not finite becomes 1.
EnvironmentActivity displayEntry(std::string name, std::optional<DisplayContext> mode);

} // namespace tidemark
