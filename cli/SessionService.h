#pragma once

#include "app/ports/RecorderService.h"

#include <memory>
#include <string>

/// What the commands about the service have in common.
namespace tidemark::sessionService {

/// The service of this system. Throws `Error` where this release has none.
std::unique_ptr<RecorderService> ofSystem();

/// Whether the service waits for the end of another process that records into the data folder, such
/// as the program with windows.
bool isWaiting(const RecorderService::Status& status);

/// The status as a sentence with a line break.
std::string sentence(const RecorderService::Status& status);

} // namespace tidemark::sessionService
