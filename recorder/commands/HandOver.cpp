#include "app/base/AppClock.h"
#include "app/ports/DesktopServices.h"
#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

/// How long a client may take to read the answer.
constexpr double answerSeconds = 2;

Error noRecorder() {
    return Error("No recorder without a window is running.");
}

/// Calls `end` as soon as the client has disconnected, which it does when it has the answer, and
/// after `answerSeconds` at the latest.
QCoro::Task<void> endAfterAnswer(Recorder& recorder, std::function<void()> end,
                                 std::stop_token departed) {
    const auto hold = recorder.tasks().hold();
    co_await AppClock::system().sleep(answerSeconds, std::move(departed), AppClock::Slack::none);
    end();
}

QCoro::Task<std::string> handOver(CommandContext& context, const NoOptions&) {
    auto& recorder = context.recorder;
    if (!recorder.requests().handOver)
        throw noRecorder();
    recorder.tasks().start(endAfterAnswer(recorder, recorder.requests().handOver, context.stop));
    co_return desktopServices::ownService().value_or("");
}

std::optional<CommandAnswer> withoutRecorder(StoredRecords&, const NoOptions&) {
    throw noRecorder();
}

} // namespace

Command commands::handOver() {
    return makeCommand<NoOptions, &tidemark::handOver>(
        {
            .name = "hand-over",
            .group = CommandGroup::recording,
            .summary = "End a recorder without windows, so that a program with windows can record",
            .details = "Prints the name of the service when the recorder ran as one.",
        },
        {.fromStored = withoutRecorder});
}

} // namespace tidemark
