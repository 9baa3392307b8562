#include "platform/linux/ThermalEvents.h"

#include "core/base/Error.h"
#include "platform/linux/NetlinkAttributes.h"
#include "platform/linux/NetlinkSocket.h"

#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <sys/socket.h>

namespace tidemark::thermalEvents {

namespace {

using Bytes = std::span<const std::byte>;

/// A question for the groups of the family: a header, and the name as its only attribute.
std::vector<std::byte> questionAbout(std::string_view family) {
    struct Head {
        genlmsghdr header;
        nlattr name;
    };
    const Head head{.header = {.cmd = CTRL_CMD_GETFAMILY, .version = 1, .reserved = 0},
                    .name = {.nla_len = static_cast<std::uint16_t>(NLA_HDRLEN + family.size() + 1),
                             .nla_type = CTRL_ATTR_FAMILY_NAME}};
    std::vector<std::byte> question(sizeof head + NLA_ALIGN(family.size() + 1));
    std::memcpy(question.data(), &head, sizeof head);
    std::memcpy(question.data() + sizeof head, family.data(), family.size());
    return question;
}

/// The number of the group "event", from one entry of the list of groups.
std::optional<std::uint32_t> eventGroupIn(Bytes entry) {
    bool isEvent = false;
    std::uint32_t number = 0;
    netlinkAttributes::forEach(entry, [&](std::uint16_t type, Bytes value) {
        if (type == CTRL_ATTR_MCAST_GRP_NAME)
            isEvent = netlinkAttributes::text(value) == "event";
        else if (type == CTRL_ATTR_MCAST_GRP_ID)
            number = netlinkAttributes::number32(value);
    });
    return isEvent ? std::optional(number) : std::nullopt;
}

/// The number of the group in which the messages are sent; absent when the kernel has none.
std::optional<std::uint32_t> eventGroup() {
    std::optional<std::uint32_t> group;
    const auto useFamily = [&](std::uint16_t /*type*/, Bytes reply) {
        if (reply.size() < GENL_HDRLEN)
            return;
        netlinkAttributes::forEach(
            reply.subspan(GENL_HDRLEN), [&](std::uint16_t type, Bytes groups) {
                if (type != CTRL_ATTR_MCAST_GROUPS)
                    return;
                netlinkAttributes::forEach(groups, [&](std::uint16_t /*place*/, Bytes entry) {
                    if (const auto found = eventGroupIn(entry))
                        group = found;
                });
            });
    };
    NetlinkSocket kernel(NetlinkSocket::Protocol::generic);
    kernel.ask(GENL_ID_CTRL, 0, questionAbout("thermal"), useFamily);
    return group;
}

} // namespace

FileDescriptor open() {
    std::optional<std::uint32_t> group;
    try {
        group = eventGroup();
    } catch (const Error&) {
        // Without a socket there are no messages either.
    }
    if (!group)
        return {};
    FileDescriptor socket(
        ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_GENERIC));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    if (!socket
        || ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0
        || ::setsockopt(socket.get(), SOL_NETLINK, NETLINK_ADD_MEMBERSHIP, &*group, sizeof *group)
               != 0)
        return {};
    return socket;
}

} // namespace tidemark::thermalEvents
