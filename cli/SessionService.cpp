#include "cli/SessionService.h"

#include "app/ports/SystemServices.h"
#include "core/base/Error.h"
#include "core/base/FolderLock.h"
#include "recorder/RecorderPlaces.h"

namespace tidemark::sessionService {

std::unique_ptr<RecorderService> ofSystem() {
    if (auto service = systemServices::recorderService())
        return service;
    throw Error("There is no service on this system; tidemark run records without one.");
}

bool isWaiting(const RecorderService::Status& status) {
    using enum RecorderService::Activity;
    if (status.activity != running && status.activity != starting)
        return false;
    const auto holder = FolderLock::holder(RecorderPlaces::current().files.directory);
    return holder && holder->process && *holder->process != status.process;
}

std::string sentence(const RecorderService::Status& status) {
    using enum RecorderService::Activity;
    const bool starts = status.startsWithSession;
    if (isWaiting(status))
        return std::string("The service waits until another program, which records now, ends; it ")
               + (starts ? "starts with your session.\n"
                         : "does not start with your next session.\n");
    switch (status.activity) {
    case running:
        return starts ? "The service is running, and starts with your session.\n"
                      : "The service is running, and does not start with your next session.\n";
    case starting:
        return starts ? "The service is about to start, and starts with your session.\n"
                      : "The service is about to start, but not with your next session.\n";
    case failed:
        return "The service has failed; journalctl --user --unit tidemark shows why.\n";
    case stopped:
        break;
    }
    return starts ? "The service is not running, and starts with your next session.\n"
                  : "The service is off; tidemark service enable turns it on.\n";
}

} // namespace tidemark::sessionService
