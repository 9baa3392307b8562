#pragma once

#include "core/records/SystemActivity.h"

#include <functional>

namespace tidemark {

/// Follows one aspect of the machine and makes a record of each change. Main thread only.
class ActivityMonitor {
public:
    using Record = std::function<void(SystemActivity)>;

    virtual ~ActivityMonitor() = default;

    /// Starts to follow. The first state is a starting point; `record` is called with every change
    /// after it.
    virtual void start(Record record) = 0;
    /// Stops. `record` is not called any more.
    virtual void stop() = 0;
};

} // namespace tidemark
