#include "cli/Console.h"
#include "cli/SessionService.h"
#include "cli/TerminalCommands.h"
#include "recorder/NoOptions.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

int serviceDisable(const NoOptions&) {
    const auto service = sessionService::ofSystem();
    using enum RecorderService::Activity;
    const auto activity = service->status().activity;
    const bool wasRunning = activity == running || activity == starting;
    service->disable();
    console::print(std::string(wasRunning ? "The service has ended" : "The service is off")
                   + " and does not start with your next session. The history stays.\n");
    return 0;
}

} // namespace

Command commands::serviceDisable() {
    return makeCommand<NoOptions, &tidemark::serviceDisable>({
        .name = "service disable",
        .group = CommandGroup::recording,
        .summary = "End the service and no longer start it with each session",
    });
}

} // namespace tidemark
