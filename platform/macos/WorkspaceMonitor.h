#pragma once

#include "app/base/NotificationCenter.h"
#include "app/ports/SleepAndSessionSource.h"

#include <memory>

namespace tidemark {

/// Follows sleep, wake, power-off and the return to the user's session by the notification center
/// of NSWorkspace. Posts `willSleep`, `didWake`, `screensDidSleep`, `screensDidWake`,
/// `willPowerOff`, `sessionDidBecomeActive` and `sessionDidResignActive`. Main thread only.
class WorkspaceMonitor final : public SleepAndSessionSource {
public:
    /// `notifications` must outlive the monitor.
    explicit WorkspaceMonitor(NotificationCenter& notifications);
    ~WorkspaceMonitor() override;
    WorkspaceMonitor(const WorkspaceMonitor&) = delete;
    WorkspaceMonitor& operator=(const WorkspaceMonitor&) = delete;

private:
    struct Observers;
    std::unique_ptr<Observers> observers;
};

} // namespace tidemark
