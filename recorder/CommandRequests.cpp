#include "recorder/CommandRequests.h"

#include "app/control/ControlProtocol.h"
#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"

#include <algorithm>

namespace tidemark::commandRequests {

namespace {

std::unique_ptr<Invocation> requested(const ControlRequest& request) {
    const auto all = commands::ofRecorder();
    const auto command = std::ranges::find(all, request.command, &Command::name);
    if (command == all.end())
        throw Error("The recorder has no command \"" + request.command + "\".");
    auto invocation = command->invoke();
    try {
        invocation->setOptions(request.options);
    } catch (const Error& error) {
        throw Error(
            asSentence("The recorder can't take this request: " + std::string(error.what())));
    }
    return invocation;
}

} // namespace

ControlRequest request(const Command& command, const Invocation& invocation, bool colour) {
    return {
        .command = std::string(command.name), .options = invocation.options(), .colour = colour};
}

QCoro::Task<std::string> carryOut(CommandContext context, std::unique_ptr<Invocation> invocation) {
    const auto hold = context.recorder.tasks().hold();
    auto task = invocation->carryOut(context);
    std::string text = co_await task;
    co_return text;
}

QCoro::Task<ControlAnswer> answer(Recorder& recorder, ControlRequest request,
                                  std::stop_token stop) {
    CommandContext context{recorder, request.colour, true, std::move(stop)};
    auto invocation = requested(request);
    // A request may arrive while the history is still being read.
    co_await recorder.model().historyRead();
    auto carriedOut = carryOut(std::move(context), std::move(invocation));
    std::string output = co_await carriedOut;
    co_return ControlAnswer{0, std::move(output), {}};
}

} // namespace tidemark::commandRequests
