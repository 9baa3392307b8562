#include "cli/SessionService.h"

#include "app/ports/SystemServices.h"
#include "core/base/Error.h"

namespace tidemark::sessionService {

std::unique_ptr<RecorderService> ofSystem() {
    if (auto service = systemServices::recorderService())
        return service;
    throw Error("There is no service on this system; tidemark run records without one.");
}

std::string sentence(const RecorderService::Status& status) {
    using enum RecorderService::Activity;
    const bool starts = status.startsWithSession;
    switch (status.activity) {
    case running:
        return starts ? "The service is running, and starts with your session.\n"
                      : "The service is running, and does not start with your next session.\n";
    case failed:
        return "The service has failed; journalctl --user --unit tidemark shows why.\n";
    case stopped:
        break;
    }
    return starts ? "The service is not running, and starts with your next session.\n"
                  : "The service is off; tidemark service enable turns it on.\n";
}

} // namespace tidemark::sessionService
