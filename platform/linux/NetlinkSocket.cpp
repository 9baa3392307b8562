#include "platform/linux/NetlinkSocket.h"

#include "core/base/Error.h"
#include "platform/linux/NetlinkAttributes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>

namespace tidemark {

namespace {

// Messages and attributes begin at multiples of four bytes.
constexpr std::size_t aligned(std::size_t size) {
    return (size + 3) & ~std::size_t{3};
}

void set(int socket, int level, int option, const auto& value) {
    ::setsockopt(socket, level, option, &value, sizeof value);
}

Error failed(int error) {
    return Error(std::string("The kernel can't be asked by netlink: ") + std::strerror(error)
                 + ".");
}

} // namespace

NetlinkSocket::NetlinkSocket(Protocol protocol)
    : socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC,
                      protocol == Protocol::routing ? NETLINK_ROUTE : NETLINK_GENERIC)) {
    if (!socket)
        throw failed(errno);
    // Lets the kernel filter the routes of a table. Old kernels send the routes of all tables, so
    // the reader checks the table, too.
    set(socket.get(), SOL_NETLINK, NETLINK_GET_STRICT_CHK, 1);
    set(socket.get(), SOL_SOCKET, SO_RCVTIMEO, timeval{.tv_sec = 5, .tv_usec = 0});
}

int NetlinkSocket::ask(std::uint16_t type, std::uint16_t flags, std::span<const std::byte> body,
                       const Use& use) {
    send(type, flags, body);
    int failure = 0;
    while (!receive(use, failure)) {
    }
    return failure;
}

void NetlinkSocket::send(std::uint16_t type, std::uint16_t flags, std::span<const std::byte> body) {
    nlmsghdr header{};
    header.nlmsg_len = static_cast<std::uint32_t>(sizeof header + body.size());
    header.nlmsg_type = type;
    header.nlmsg_flags = static_cast<std::uint16_t>(flags | NLM_F_REQUEST);
    header.nlmsg_seq = ++lastQuestion;
    std::vector<std::byte> message(sizeof header + body.size());
    std::memcpy(message.data(), &header, sizeof header);
    std::ranges::copy(body, message.begin() + sizeof header);
    if (::send(socket.get(), message.data(), message.size(), 0) < 0)
        throw failed(errno);
}

bool NetlinkSocket::receive(const Use& use, int& failure) {
    std::array<std::byte, std::size_t{32} * 1024> buffer;
    const ssize_t size = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
    if (size < 0 && errno == EINTR)
        return false;
    if (size < 0)
        throw failed(errno);
    std::span<const std::byte> rest(buffer.data(), static_cast<std::size_t>(size));
    while (rest.size() >= sizeof(nlmsghdr)) {
        const auto header = netlinkAttributes::read<nlmsghdr>(rest);
        if (header.nlmsg_len < sizeof header || header.nlmsg_len > rest.size())
            break;
        const auto body = rest.first(header.nlmsg_len).subspan(sizeof header);
        rest = rest.subspan(std::min(rest.size(), aligned(header.nlmsg_len)));
        // This belongs to an earlier question, whose reply was not read to its end.
        if (header.nlmsg_seq != lastQuestion)
            continue;
        if (header.nlmsg_type == NLMSG_ERROR || header.nlmsg_type == NLMSG_DONE) {
            failure = body.size() >= sizeof(int) ? -netlinkAttributes::read<int>(body) : EBADMSG;
            return true;
        }
        use(header.nlmsg_type, body);
        if ((header.nlmsg_flags & NLM_F_MULTI) == 0)
            return true;
    }
    return false;
}

void NetlinkSocket::discardAll(int socket) {
    std::array<std::byte, 1> first;
    // ENOBUFS reports once that messages were lost.
    while (::recv(socket, first.data(), first.size(), MSG_DONTWAIT) >= 0 || errno == ENOBUFS
           || errno == EINTR) {
    }
}

} // namespace tidemark
