#pragma once

#include "app/ports/ApplicationSource.h"
#include "app/ports/FileIndex.h"
#include "app/ports/LoginItem.h"
#include "app/ports/SleepAndSessionSource.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {
class NotificationCenter;
}

/// Creates the implementations of the ports for this system. Each system defines these functions in
/// one source file, the only one that chooses its adapters.
namespace tidemark::systemServices {

/// `notifications` must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);

/// Null where this release has none for the system.
std::unique_ptr<ApplicationSource> applications();
/// Why launches of applications are not noticed on this machine, as a sentence; absent when they
/// are.
std::optional<std::string> applicationsAbsence();
/// Null where this release has none for the system.
std::unique_ptr<FileIndex> fileIndex();
/// `command` is the absolute path of the program to start at login, and its arguments. Null where
/// this release has none for the system.
std::unique_ptr<LoginItem> loginItem(std::vector<std::string> command);

} // namespace tidemark::systemServices
