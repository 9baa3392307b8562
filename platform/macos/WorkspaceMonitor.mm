#include "platform/macos/WorkspaceMonitor.h"

#import <AppKit/AppKit.h>

#include <array>
#include <utility>

namespace tidemark {

struct WorkspaceMonitor::Observers {
    NSMutableArray<id<NSObject>>* tokens = [NSMutableArray array];
};

WorkspaceMonitor::WorkspaceMonitor(NotificationCenter& notifications)
    : observers(std::make_unique<Observers>()) {
    const std::array<std::pair<NSNotificationName, Notification>, 7> posts{{
        {NSWorkspaceWillSleepNotification, notification::willSleep},
        {NSWorkspaceDidWakeNotification, notification::didWake},
        {NSWorkspaceScreensDidSleepNotification, notification::screensDidSleep},
        {NSWorkspaceScreensDidWakeNotification, notification::screensDidWake},
        {NSWorkspaceWillPowerOffNotification, notification::willPowerOff},
        {NSWorkspaceSessionDidBecomeActiveNotification, notification::sessionDidBecomeActive},
        {NSWorkspaceSessionDidResignActiveNotification, notification::sessionDidResignActive},
    }};
    NotificationCenter* center = &notifications;
    for (const auto& post : posts) {
        const Notification notification = post.second;
        [observers->tokens
            addObject:[NSWorkspace.sharedWorkspace.notificationCenter
                          addObserverForName:post.first
                                      object:nil
                                       queue:NSOperationQueue.mainQueue
                                  usingBlock:^(NSNotification*) { center->post(notification); }]];
    }
}

WorkspaceMonitor::~WorkspaceMonitor() {
    for (id<NSObject> token in observers->tokens)
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:token];
}

} // namespace tidemark
