#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct Options {
    bool yes = false;

    static constexpr auto fields() {
        return std::tuple{Option{"yes", &Options::yes, "Do not ask"}};
    }
};

QCoro::Task<std::string> clipsClear(CommandContext& context, const Options&) {
    co_await context.model().openHistory();
    context.requireHistory();
    context.recorder.memoryHistory().clearClipboard();
    co_return "All saved clips are deleted.\n";
}

std::optional<std::string> question(const Options& options) {
    if (options.yes)
        return std::nullopt;
    return "Delete all saved clipboard items, including pins?";
}

} // namespace

Command commands::clipsClear() {
    return makeCommand<Options, &tidemark::clipsClear>(
        {
            .name = "clips clear",
            .group = CommandGroup::history,
            .summary = "Delete all recorded clips, pinned ones too",
        },
        {.question = question});
}

} // namespace tidemark
