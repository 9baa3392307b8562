#include "core/activity/NetworkRoutes.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace tidemark::NetworkRoutes {

namespace {

using Interface = NetworkConnectionState::Interface;
using Interfaces = std::set<Interface>;

// Hardware types of <linux/if_arp.h>.
constexpr std::uint16_t ethernetHardware = 1;
constexpr std::uint16_t rawIp = 519;
constexpr std::uint16_t loopback = 772;
/// ARPHRD_PPP, _TUNNEL, _TUNNEL6, _SIT, _IPGRE and _NONE.
constexpr auto tunnelHardware = std::to_array<std::uint16_t>({512, 768, 769, 776, 778, 65534});
constexpr auto tunnelKinds = std::to_array<std::string_view>(
    {"tun", "wireguard", "ipip", "sit", "gre", "gretap", "ip6tnl", "ip6gre", "ip6gretap", "vti",
     "vti6", "xfrm", "ppp", "l2tpeth"});
/// Kinds of interfaces that transmit through the one that IFLA_LINK names. For other kinds
/// IFLA_LINK names something else, such as the other end of a veth.
constexpr auto stackedKinds =
    std::to_array<std::string_view>({"vlan", "macvlan", "macvtap", "ipvlan", "ipvtap"});

template <class Values, class Value>
bool contains(const Values& values, const Value& value) {
    return std::ranges::find(values, value) != values.end();
}

bool isCellular(const Link& link) {
    return link.isCellular || link.kind == "wwan" || link.kind == "rmnet" || link.hardware == rawIp;
}

bool isTunnel(const Link& link) {
    // Modems have the hardware type of a tunnel as well.
    return contains(tunnelKinds, link.kind)
           || (contains(tunnelHardware, link.hardware) && !isCellular(link));
}

/// A connection to a container or a virtual machine.
bool isGuestEnd(const Link& link) {
    return link.kind == "veth" || link.kind == "tun";
}

Interface ownKind(const Link& link) {
    if (link.isWireless)
        return Interface::wifi;
    if (isCellular(link))
        return Interface::cellular;
    return link.hardware == ethernetHardware && !isTunnel(link) ? Interface::ethernet
                                                                : Interface::other;
}

class Links {
public:
    explicit Links(const std::vector<Link>& links) : links(links) {}

    /// The link that packets can leave by; null when it can't transmit.
    const Link* usable(LinkIndex index) const {
        const auto found = std::ranges::find(links, index, &Link::index);
        return found != links.end() && found->isRunning && found->hardware != loopback ? &*found
                                                                                       : nullptr;
    }

    /// The kinds of the interfaces that a link transmits through; its own if there are none.
    Interfaces kinds(const Link& link, int depth = 0) const {
        // Deeper stacks are not built; a loop is not possible, but would end here.
        constexpr int deepest = 8;
        Interfaces below;
        if (depth < deepest)
            for (const auto& candidate : links)
                if (isBelow(candidate, link) && candidate.isRunning && !isGuestEnd(candidate))
                    below.merge(kinds(candidate, depth + 1));
        return below.empty() ? Interfaces{ownKind(link)} : below;
    }

private:
    static bool isBelow(const Link& candidate, const Link& link) {
        return candidate.master == link.index
               || (candidate.index == link.lower && contains(stackedKinds, link.kind));
    }

    const std::vector<Link>& links;
};

} // namespace

NetworkConnectionState state(const Reading& reading, std::optional<bool> metered) {
    const Links links(reading.links);
    Interfaces interfaces;
    bool usesTunnel = false;
    for (const LinkIndex index : reading.routes.empty() ? reading.defaults : reading.routes)
        if (const Link* link = links.usable(index)) {
            interfaces.merge(links.kinds(*link));
            usesTunnel = usesTunnel || isTunnel(*link);
            // Only the preferred one of several default routes is used.
            if (reading.routes.empty())
                break;
        }
    if (usesTunnel)
        for (const LinkIndex index : reading.defaults)
            if (const Link* link = links.usable(index); link && !isTunnel(*link)) {
                interfaces.merge(links.kinds(*link));
                break;
            }
    if (!metered && interfaces.contains(Interface::cellular))
        metered = true;
    if (interfaces.empty())
        return NetworkConnectionState::make(NetworkConnectionState::Availability::unavailable, {});
    return NetworkConnectionState::make(NetworkConnectionState::Availability::available,
                                        std::move(interfaces), metered);
}

} // namespace tidemark::NetworkRoutes
