#include "desktop/OtherRecorder.h"

#include "app/control/ControlClient.h"
#include "core/base/Error.h"
#include "recorder/CommandRequests.h"
#include "recorder/Commands.h"

#include <chrono>

namespace tidemark {

namespace {

std::optional<ControlAnswer> carryOut(const RecorderPlaces& places, const Command& command) {
    ControlClient::Patience patience;
    patience.answer = std::chrono::seconds(15);
    try {
        return ControlClient::ask(
            places.sockets, commandRequests::request(command, *command.invoke(), false), patience);
    } catch (const ControlClient::RecorderEnded&) {
        return std::nullopt;
    }
}

} // namespace

OtherRecorder OtherRecorder::ask(const RecorderPlaces& places) {
    const auto shown = carryOut(places, commands::window());
    if (!shown)
        return {};
    if (shown->error.empty())
        return {.hasWindow = true};
    const auto left = carryOut(places, commands::handOver());
    if (left && !left->error.empty())
        throw Error(left->error);
    return {.service = left ? left->output : ""};
}

} // namespace tidemark
