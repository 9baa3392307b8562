#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

Error noWindow() {
    return Error("No window is open; tidemark-desktop opens one.");
}

QCoro::Task<std::string> window(CommandContext& context, const NoOptions&) {
    const auto& show = context.recorder.requests().showWindow;
    if (!show)
        throw noWindow();
    show();
    co_return "";
}

std::optional<CommandAnswer> withoutProgram(StoredRecords&, const NoOptions&) {
    throw noWindow();
}

} // namespace

Command commands::window() {
    return makeCommand<NoOptions, &tidemark::window>(
        {
            .name = "window",
            .group = CommandGroup::recording,
            .summary = "Bring the window of tidemark-desktop forward",
        },
        {.fromStored = withoutProgram, .needsProgram = [](const NoOptions&) { return true; }});
}

} // namespace tidemark
