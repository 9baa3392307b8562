#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/GivenClip.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct ClipsPinOptions {
    std::string id;
    bool off = false;

    static constexpr auto fields() {
        return std::tuple{Option{"id",
                                 &ClipsPinOptions::id,
                                 givenClipHelp,
                                 {.isPositional = true, .isRequired = true}},
                          Option{"off", &ClipsPinOptions::off, "Let it expire again"}};
    }
};

QCoro::Task<std::string> clipsPin(CommandContext& context, const ClipsPinOptions& options) {
    co_await context.model().openHistory();
    context.requireHistory();
    auto& history = context.recorder.memoryHistory();
    const auto clip = givenClip(history.clips(), options.id);
    if (clip->pinned == options.off)
        history.togglePin(clip->id);
    co_return "\"" + oneLine(clip->title)
        + (options.off ? "\" is pinned no longer.\n" : "\" is pinned; it does not expire.\n");
}

} // namespace

Command commands::clipsPin() {
    return makeCommand<ClipsPinOptions, &tidemark::clipsPin>({
        .name = "clips pin",
        .group = CommandGroup::history,
        .summary = "Keep a recorded clip when it becomes old",
    });
}

} // namespace tidemark
