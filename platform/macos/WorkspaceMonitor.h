#pragma once

#include "app/base/NotificationCenter.h"
#include "app/ports/SleepAndSessionSource.h"

#include <memory>

namespace tidemark {

/// Sleep, wake, power-off and the return to the user's session, as the notification center of
/// NSWorkspace tells of them. Posts `willSleep`, `didWake`, `screensDidSleep`, `screensDidWake`,
/// `willPowerOff`, `sessionDidBecomeActive` and `sessionDidResignActive`. Main thread only.
class WorkspaceMonitor final : public SleepAndSessionSource {
public:
    /// The center must outlive the monitor.
    explicit WorkspaceMonitor(NotificationCenter& notifications);
    ~WorkspaceMonitor() override;
    WorkspaceMonitor(const WorkspaceMonitor&) = delete;
    WorkspaceMonitor& operator=(const WorkspaceMonitor&) = delete;

private:
    struct Observers;
    std::unique_ptr<Observers> observers;
};

} // namespace tidemark
