#pragma once

#include "core/records/BatteryActivity.h"

#include <optional>
#include <string>

namespace tidemark {

/// Reads the power source and the internal battery and follows their changes for its lifetime. Main
/// thread only; does not block.
///
/// It is created with a function `didChange`, which it calls from the event loop, never from its
/// constructor or destructor, whenever it returns other values than before.
class BatterySource {
public:
    enum class State {
        /// Nothing is known yet, or not any more.
        unknown,
        /// The system has no service that reports power sources; `absence` says which one is
        /// missing.
        unavailable,
        following,
    };

    virtual ~BatterySource() = default;

    virtual State state() const = 0;
    /// The present reading. Absent unless `following`, and on a machine without an internal battery
    /// or with an unreadable one.
    virtual std::optional<BatteryObservation> reading() const = 0;
    /// Why power can't be observed, as a sentence; absent unless `unavailable`.
    virtual std::optional<std::string> absence() const = 0;
};

} // namespace tidemark
