#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/GivenClip.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct ClipsCopyOptions {
    std::string id;

    static constexpr auto fields() {
        return std::tuple{Option{"id",
                                 &ClipsCopyOptions::id,
                                 givenClipHelp,
                                 {.isPositional = true, .isRequired = true}}};
    }
};

QCoro::Task<std::string> clipsCopy(CommandContext& context, const ClipsCopyOptions& options) {
    co_await context.model().openHistory();
    context.requireHistory();
    // Another program asks for the content when it pastes.
    if (!context.isRunning)
        throw Error("No recorder is running, and only one that goes on can keep a clip on the "
                    "clipboard. tidemark run starts one.");
    const auto clip = givenClip(context.recorder.memoryHistory().clips(), options.id);
    if (!context.recorder.clipboardHistory().copyAgain(*clip))
        throw Error("The recorder runs outside of a graphical session, so it can reach no "
                    "clipboard.");
    co_return "\"" + oneLine(clip->title) + "\" is on the clipboard again.\n";
}

} // namespace

Command commands::clipsCopy() {
    return makeCommand<ClipsCopyOptions, &tidemark::clipsCopy>({
        .name = "clips copy",
        .group = CommandGroup::history,
        .summary = "Put a recorded clip on the clipboard again",
        .family = "Copy recorded clips again, pin or delete them",
    });
}

} // namespace tidemark
