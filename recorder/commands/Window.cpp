#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

QCoro::Task<std::string> window(CommandContext& context, const NoOptions&) {
    const auto& show = context.recorder.requests().showWindow;
    if (!show)
        throw Error("No window is open; tidemark-desktop opens one.");
    show();
    co_return "";
}

} // namespace

Command commands::window() {
    return makeCommand<NoOptions, &tidemark::window>({
        .name = "window",
        .group = CommandGroup::recording,
        .summary = "Bring the window of tidemark-desktop forward",
    });
}

} // namespace tidemark
