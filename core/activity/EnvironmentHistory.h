#pragma once

#include "core/records/SystemActivity.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Turns successive states of volumes, displays and thermal pressure into records of their
/// differences. The caller passes the time to each call.
class EnvironmentHistory {
public:
    /// Seconds that the caller waits after the last notification of a change before it reads the
    /// state.
    static constexpr double delay = 2;

    /// Volumes by mount point, or displays by a key that identifies each among all that are
    /// connected.
    using Entries = std::map<std::string, EnvironmentActivity>;

    /// The state at one moment.
    struct State {
        Entries volumes{};
        /// Absent while it is not known which displays there are.
        std::optional<Entries> displays{};
        /// A name of `ThermalState`; absent while it is not known and on a machine that reports
        /// none.
        std::optional<std::string> thermal{};
    };

    /// Returns records of the differences from the previous state, all dated `at`: volumes and
    /// displays that were added or removed, displays with another configuration, each in the order
    /// of their keys, then thermal pressure. The first call returns none, and there are none for
    /// displays or thermal pressure that were not known in both states.
    std::vector<SystemActivity> receive(State now, Date at);
    /// Makes the next state a new starting point.
    void reset() { *this = {}; }

private:
    std::vector<SystemActivity> changes(const State& before, const State& after, Date at) const;

    std::optional<State> last;
    /// When the thermal state became elevated; absent while it is not elevated, and when its start
    /// was not observed.
    std::optional<Date> elevatedSince;
};

/// The entry of a volume mounted at `path`. If the volume's own name can't be read, the name is
/// taken from `path`.
EnvironmentActivity volumeEntry(std::string path, std::optional<VolumeContext> volume);

/// The entry of a display, with its mode if that can be read. A refresh rate that is not finite or
/// not above 0 becomes absent, and a scale that is not finite becomes 1.
EnvironmentActivity displayEntry(std::string name, std::optional<DisplayContext> mode);

} // namespace tidemark
