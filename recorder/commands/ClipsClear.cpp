#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct ClipsClearOptions {
    bool yes = false;

    static constexpr auto fields() {
        return std::tuple{Option{"yes", &ClipsClearOptions::yes, "Do not ask"}};
    }
};

QCoro::Task<std::string> clipsClear(CommandContext& context, const ClipsClearOptions&) {
    co_await context.model().openHistory();
    context.requireHistory();
    context.recorder.memoryHistory().clearClipboard();
    co_return "All saved clips are deleted.\n";
}

std::optional<std::string> question(const ClipsClearOptions& options) {
    if (options.yes)
        return std::nullopt;
    return "Delete all saved clipboard items, including pins?";
}

} // namespace

Command commands::clipsClear() {
    return makeCommand<ClipsClearOptions, &tidemark::clipsClear>(
        {
            .name = "clips clear",
            .group = CommandGroup::history,
            .summary = "Delete all recorded clips, pinned ones too",
        },
        {.question = question});
}

} // namespace tidemark
