#include "platform/linux/BusProbe.h"

#include "core/base/Hex.h"
#include "platform/linux/PeerSockets.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tidemark {

namespace {

constexpr std::chrono::seconds retryTime{5};
constexpr std::string_view endOfLine = "\r\n";

std::optional<std::pair<sockaddr_un, socklen_t>> socketAddress(const busAddress::LocalSocket& bus) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // The name of an abstract socket follows a zero byte and is not terminated; its length counts.
    const std::size_t start = bus.isAbstract ? 1 : 0;
    if (start + bus.name.size() >= sizeof address.sun_path)
        return std::nullopt;
    bus.name.copy(address.sun_path + start, bus.name.size());
    const std::size_t size =
        bus.isAbstract ? offsetof(sockaddr_un, sun_path) + start + bus.name.size() : sizeof address;
    return std::pair(address, static_cast<socklen_t>(size));
}

void align(std::string& message) {
    constexpr std::size_t alignment = 8;
    message.resize((message.size() + alignment - 1) / alignment * alignment);
}

void append(std::string& message, std::uint32_t number) {
    for (unsigned shift = 0; shift < 32; shift += 8)
        message += static_cast<char>(number >> shift & 0xFFU);
}

/// Appends a header field: its number, the signature of its value, and a text.
void append(std::string& fields, char number, char signature, std::string_view text) {
    align(fields);
    fields += {number, 1, signature, '\0'};
    append(fields, static_cast<std::uint32_t>(text.size()));
    fields += text;
    fields += '\0';
}

/// The message that calls org.freedesktop.DBus.Hello, in little-endian byte order.
std::string helloMessage() {
    std::string fields;
    append(fields, 1, 'o', "/org/freedesktop/DBus");
    append(fields, 2, 's', "org.freedesktop.DBus");
    append(fields, 3, 's', "Hello");
    append(fields, 6, 's', "org.freedesktop.DBus");
    // Little endian, method call, no flags, protocol version 1; then no body and serial number 1.
    std::string message{'l', 1, 0, 1};
    append(message, 0);
    append(message, 1);
    append(message, static_cast<std::uint32_t>(fields.size()));
    message += fields;
    align(message);
    return message;
}

/// The client's part of the handshake. It can be sent at once, because the server reads it line by
/// line.
std::string handshake() {
    std::string bytes("\0AUTH EXTERNAL ", 15);
    for (const char digit : std::to_string(::geteuid()))
        appendHex(bytes, static_cast<std::uint8_t>(digit));
    bytes += endOfLine;
    bytes += "BEGIN\r\n";
    return bytes + helloMessage();
}

} // namespace

BusProbe::BusProbe(busAddress::LocalSocket address, std::function<void(bool)> didAnswer)
    : address(std::move(address)), didAnswer(std::move(didAnswer)) {
    retry.setSingleShot(true);
    retry.callOnTimeout(this, [this] { connectToBus(); });
    retry.start(0);
}

void BusProbe::connectToBus() {
    const auto known = socketAddress(address);
    socket = FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!known || !socket)
        return end(false);
    const auto& [name, size] = *known;
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&name), size) != 0) {
        if (errno == EAGAIN)
            return retry.start(retryTime);
        return end(false);
    }
    const std::string bytes = handshake();
    if (::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL)
        != static_cast<ssize_t>(bytes.size()))
        return end(false);
    notifier = std::make_unique<QSocketNotifier>(socket.get(), QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this] { receive(); });
}

void BusProbe::receive() {
    constexpr std::size_t most = std::size_t{64} * 1024;
    std::array<char, 1024> block{};
    const ssize_t count = ::recv(socket.get(), block.data(), block.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0 || received.size() > most)
        return end(false);
    received.append(block.data(), static_cast<std::size_t>(count));
    // The first line is the reply to the handshake, everything after it the reply to Hello.
    const std::size_t line = received.find(endOfLine);
    if (line == std::string::npos)
        return;
    if (!received.starts_with("OK"))
        return end(false);
    if (received.size() <= line + endOfLine.size())
        return;
    peer = peerSockets::addressOf(socket.get());
    end(true);
}

void BusProbe::end(bool isThere) {
    // Deleted later, because this may be called by a signal of the notifier.
    if (notifier) {
        notifier->setEnabled(false);
        notifier.release()->deleteLater();
    }
    socket.reset();
    didAnswer(isThere);
}

} // namespace tidemark
