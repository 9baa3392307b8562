#pragma once

#include "core/base/FileDescriptor.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace tidemark {

/// Asks the kernel by netlink(7). Nothing is sent to a network. A question waits for locks of the
/// kernel, so it must not be asked on the event loop. Used by one thread at a time.
class NetlinkSocket {
public:
    /// A message of a reply: its type and what follows its header.
    using Use = std::function<void(std::uint16_t type, std::span<const std::byte> body)>;

    enum class Protocol {
        /// Links and routes, rtnetlink(7).
        routing,
        /// Everything that is not common enough for a protocol of its own.
        generic,
    };

    /// Throws `Error` when no socket can be opened.
    explicit NetlinkSocket(Protocol protocol);

    /// Sends a question of this type, with NLM_F_… flags and a body, and calls `use` with each
    /// message of the reply. Returns 0, or the error number with which the kernel replies. Throws
    /// `Error` when the question can't be sent, or when no reply arrives for five seconds.
    int ask(std::uint16_t type, std::uint16_t flags, std::span<const std::byte> body,
            const Use& use);

    /// Takes all messages that have arrived at a socket, without waiting.
    static void discardAll(int socket);

private:
    void send(std::uint16_t type, std::uint16_t flags, std::span<const std::byte> body);
    /// Reads one datagram. Returns true when the reply has ended; `failure` is set if it ended with
    /// an error.
    bool receive(const Use& use, int& failure);

    FileDescriptor socket;
    std::uint32_t lastQuestion = 0;
};

} // namespace tidemark
