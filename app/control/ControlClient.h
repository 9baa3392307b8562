#pragma once

#include "app/control/ControlProtocol.h"

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

/// The answer of the recorder that listens at one of `sockets`; absent when none does. Throws
/// `Error` when the request can't be sent or no complete answer is received.
std::optional<ControlAnswer> ask(const std::vector<std::filesystem::path>& sockets,
                                 const ControlRequest& request, const Patience& patience = {});

} // namespace tidemark::ControlClient
