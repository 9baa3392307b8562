#include "cli/Console.h"
#include "cli/SessionService.h"
#include "cli/TerminalCommands.h"
#include "recorder/NoOptions.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

int serviceEnable(const NoOptions&) {
    const auto service = sessionService::ofSystem();
    service->enable();
    console::print(sessionService::sentence(service->status()));
    return 0;
}

} // namespace

Command commands::serviceEnable() {
    return makeCommand<NoOptions, &tidemark::serviceEnable>({
        .name = "service enable",
        .group = CommandGroup::recording,
        .summary = "Start the service now and with each session",
        .details =
            "While tidemark-desktop runs, that program records; when it ends, the service records\n"
            "again. On its very first start the service monitors the recommended folders that can\n"
            "be read; the commands of tidemark folders change that.",
    });
}

} // namespace tidemark
