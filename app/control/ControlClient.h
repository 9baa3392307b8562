#pragma once

#include "app/control/ControlProtocol.h"
#include "core/base/Error.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <vector>

/// The client side of the control socket, for a process that sends a command to the recorder.
/// Blocks; needs no event loop.
namespace tidemark::ControlClient {

/// The time limits of each step.
struct Patience {
    std::chrono::milliseconds connection{2'000};
    /// From the request until the complete answer; the command itself can take long.
    std::chrono::milliseconds answer{std::chrono::minutes(15)};
};

/// The whole request was sent, and the recorder closed the connection before its answer was
/// complete, for example because the recorder was ending. The command may have been carried out.
class RecorderEnded : public Error {
public:
    RecorderEnded()
        : Error("The recorder ended the connection before it answered, so it is not known whether "
                "the command was carried out.") {}
};

/// The answer of the recorder that listens at one of `sockets`; absent when none does, and when
/// the recorder closes the connection before the whole request is sent. Throws `RecorderEnded`, and
/// `Error` when the recorder can't be reached, the request can't be sent, or the answer takes too
/// long or can't be decoded.
std::optional<ControlAnswer> ask(const std::vector<std::filesystem::path>& sockets,
                                 const ControlRequest& request, const Patience& patience = {});

} // namespace tidemark::ControlClient
