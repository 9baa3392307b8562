#pragma once

#include <QCoroTask>
#include <functional>

namespace tidemark {

/// Follows sleep, wake, power-off and the user's session for its lifetime and posts them to a
/// `NotificationCenter`. Posts nothing when the system has no such service. Main thread only.
class SleepAndSessionSource {
public:
    /// Waits until the observers of `willSleep` have finished their work. The sleep is delayed
    /// until then where the system allows it.
    using Settle = std::function<QCoro::Task<void>()>;

    virtual ~SleepAndSessionSource() = default;
};

} // namespace tidemark
