#pragma once

#include "core/records/SystemActivity.h"

#include <functional>

namespace tidemark {

/// Follows something of the machine and makes a record of each change. Main thread only.
class ActivityMonitor {
public:
    using Record = std::function<void(SystemActivity)>;

    virtual ~ActivityMonitor() = default;

    /// Follows from now on: what is found first is a starting point, and every change after it
    /// goes to `record`.
    virtual void start(Record record) = 0;
    /// Ends that. `record` is not called any more.
    virtual void stop() = 0;
};

} // namespace tidemark
