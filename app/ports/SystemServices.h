#pragma once

#include "app/ports/ApplicationSource.h"
#include "app/ports/Clipboard.h"
#include "app/ports/DesktopNotifications.h"
#include "app/ports/FileIndex.h"
#include "app/ports/LoginItem.h"
#include "app/ports/RecorderService.h"
#include "app/ports/ScreenSleepSource.h"
#include "app/ports/SleepAndSessionSource.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {
class NotificationCenter;
}

/// Creates the implementations of the ports for this system, except for those of the monitors
/// (`systemMonitors`) and those that only windows need (DesktopServices.h). Each system defines
/// these functions in one source file, the only one that chooses these adapters. A port that this
/// system does not have is null.
namespace tidemark::systemServices {

/// `notifications` must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);
/// `notifications` must outlive the source.
std::unique_ptr<ScreenSleepSource> screenSleep(NotificationCenter& notifications);
/// Null where this release has none for the system.
std::unique_ptr<Clipboard> clipboard();
/// Why the clipboard can't be followed in the present session, as a sentence; absent when it can,
/// as far as that is known before it is followed. An empty text where `clipboard` is null.
std::optional<std::string> clipboardAbsence();
/// Null where this release has none for the system.
std::unique_ptr<ApplicationSource> applications();
/// Why launches of applications are not noticed on this machine, as a sentence; absent when they
/// are.
std::optional<std::string> applicationsAbsence();
/// Null where this release has none for the system.
std::unique_ptr<DesktopNotifications> desktopNotifications();
/// Why no notifications can be shown in the present session, as a sentence; absent when they can,
/// as far as that is known before one is shown. An empty text where `desktopNotifications` is null.
std::optional<std::string> desktopNotificationsAbsence();
/// Whether `fileIndex` returns one.
bool hasFileIndex();
/// Null where this release has none for the system.
std::unique_ptr<FileIndex> fileIndex();
/// `command` is the absolute path of the program to start at login, and its arguments. Null where
/// this release has none for the system.
std::unique_ptr<LoginItem> loginItem(std::vector<std::string> command);
/// Null where this release has none for the system.
std::unique_ptr<RecorderService> recorderService();

} // namespace tidemark::systemServices
