#pragma once

#include "core/records/ConnectionActivity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Derives the state of the network connection from links and routes as a kernel reports them by
/// rtnetlink(7). Pure functions.
namespace tidemark::NetworkRoutes {

using LinkIndex = std::int32_t;

/// A network interface.
struct Link {
    /// Unique and above 0.
    LinkIndex index = 0;
    std::string name{};
    /// The hardware type: ARPHRD_… of <linux/if_arp.h>.
    std::uint16_t hardware = 0;
    /// The driver of a virtual interface (IFLA_INFO_KIND) such as "bridge"; empty for others.
    std::string kind{};
    /// IFF_RUNNING: it can transmit. An Ethernet port without a cable can't.
    bool isRunning = false;
    /// The bridge, bond or team that it is a port of; 0 for none.
    LinkIndex master = 0;
    /// IFLA_LINK: for a VLAN and similar kinds the interface that it transmits through, for others
    /// something else, such as the other end of a veth; 0 for none.
    LinkIndex lower = 0;
    bool isWireless = false;
    bool isCellular = false;
};

struct Reading {
    std::vector<Link> links;
    /// The links by which packets to the internet would leave, one for each address family that has
    /// a route.
    std::vector<LinkIndex> routes;
    /// The links of the default routes of the main table, preferred ones first.
    std::vector<LinkIndex> defaults;
};

/// The state by all links of `routes`; if `routes` is empty, by the first link of `defaults` that
/// can transmit. Links that can't transmit don't count. Bridges, bonds and the like have the kinds
/// of the interfaces below them. A tunnel is `other`, together with the kind of the preferred
/// default route outside of a tunnel. `metered` is whether the connection costs money; if absent,
/// a cellular connection is taken to cost money, and of others it is not known.
NetworkConnectionState state(const Reading& reading, std::optional<bool> metered);

} // namespace tidemark::NetworkRoutes
