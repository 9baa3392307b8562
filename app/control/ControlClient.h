#pragma once

#include "app/control/ControlProtocol.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <vector>

/// The other end of the control socket, for a process that has a command for the recorder. Blocks,
/// and needs no event loop.
namespace tidemark::ControlClient {

/// How long each step may take.
struct Patience {
    std::chrono::milliseconds connection{2'000};
    /// From the request until the answer is there whole; the command may be a long one.
    std::chrono::milliseconds answer{std::chrono::minutes(15)};
};

/// The answer of the recorder that listens at one of `sockets`, absent when none does. Throws
/// `Error` when the request can't be handed over, or when no whole answer comes.
std::optional<ControlAnswer> ask(const std::vector<std::filesystem::path>& sockets,
                                 const ControlRequest& request, const Patience& patience = {});

} // namespace tidemark::ControlClient
