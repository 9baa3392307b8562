#include "platform/linux/RoutingWatch.h"

#include "platform/linux/NetlinkSocket.h"

#include <QObject>
#include <array>
#include <cerrno>
#include <cstring>
#include <span>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace tidemark {

namespace {

constexpr auto linkGroups = std::to_array<int>({RTNLGRP_LINK});
constexpr auto pathGroups =
    std::to_array<int>({RTNLGRP_LINK, RTNLGRP_IPV4_IFADDR, RTNLGRP_IPV6_IFADDR, RTNLGRP_IPV4_ROUTE,
                        RTNLGRP_IPV6_ROUTE, RTNLGRP_IPV4_RULE, RTNLGRP_IPV6_RULE});

bool join(int socket, std::span<const int> groups) {
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return false;
    for (const int group : groups)
        if (::setsockopt(socket, SOL_NETLINK, NETLINK_ADD_MEMBERSHIP, &group, sizeof group) != 0)
            return false;
    return true;
}

} // namespace

RoutingWatch::RoutingWatch(Subject subject, std::function<void()> changed,
                           std::chrono::milliseconds delayTime)
    : changed(std::move(changed)),
      socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE)) {
    const std::span<const int> groups =
        subject == Subject::links ? std::span<const int>(linkGroups) : pathGroups;
    if (!socket || !join(socket.get(), groups)) {
        qWarning("Changes of the network can't be followed: %s.", std::strerror(errno));
        return;
    }
    delay.setSingleShot(true);
    delay.setInterval(delayTime);
    delay.callOnTimeout([this] { proceed(); });
    notifier = std::make_unique<QSocketNotifier>(socket.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { pause(); });
}

void RoutingWatch::pause() {
    notifier->setEnabled(false);
    delay.start();
}

void RoutingWatch::proceed() {
    NetlinkSocket::discardAll(socket.get());
    notifier->setEnabled(true);
    changed();
}

} // namespace tidemark
