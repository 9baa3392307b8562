#pragma once

#include "core/records/SystemActivity.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Volumes, displays and thermal pressure, compared from one whole snapshot to the next. Has no
/// clock of its own: each call takes the time.
class EnvironmentHistory {
public:
    /// Seconds from the last sign of a change to the snapshot that tells of it.
    static constexpr double delay = 2;

    /// Volumes by mount point or displays by the system's number of them, as text.
    using Entries = std::map<std::string, EnvironmentActivity>;

    /// Takes one snapshot; `thermal` is a name of `ThermalState`. The records of what differs from
    /// the one before, all at `at`: volumes and displays that came or went, displays with another
    /// configuration, each in the order of their keys, then thermal pressure. The first makes none.
    std::vector<SystemActivity> receive(Entries volumes, Entries displays, std::string thermal,
                                        Date at);
    /// The next snapshot is a new starting point.
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
    /// When the thermal state became elevated; absent when nobody saw that.
    std::optional<Date> elevatedSince;
};

/// The entry of a mounted volume in a snapshot, named by the last component of its mount point
/// `path` where it has no name that can be read.
EnvironmentActivity volumeEntry(std::string path, std::optional<VolumeContext> volume);

/// The entry of a display, with its mode if that can be read. A refresh rate that is not a number
/// above 0 is none, and a scale that is no number is 1.
EnvironmentActivity displayEntry(std::string name, std::optional<DisplayContext> mode);

} // namespace tidemark
