#pragma once

#include <QCoroTask>
#include <functional>

namespace tidemark {

/// Follows sleep, wake, power-off and the user's session for as long as it lives, and posts what
/// happens to a `NotificationCenter`. Without such a service it posts nothing. Main thread only.
class SleepAndSessionSource {
public:
    /// Waits for what the observers of `willSleep` have begun; a system that can be delayed goes
    /// to sleep only after that.
    using Settle = std::function<QCoro::Task<void>()>;

    virtual ~SleepAndSessionSource() = default;
};

} // namespace tidemark
