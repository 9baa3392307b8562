#include "core/activity/NetworkRoutes.h"

#include <gtest/gtest.h>

using namespace tidemark;
using NetworkRoutes::Link;

namespace {

// Indexes of links.
constexpr int lo = 1;
constexpr int eth = 2;
constexpr int wlan = 3;
constexpr int unplugged = 4;
constexpr int modem = 5;
constexpr int bridge = 6;
constexpr int port = 7;
constexpr int guest = 8;
constexpr int tunnel = 9;
constexpr int wireguard = 10;
constexpr int bond = 11;
constexpr int vlan = 12;
constexpr int hostBridge = 13;
constexpr int point = 14;

const std::vector<Link> links{
    {.index = lo, .name = "lo", .hardware = 772, .isRunning = true},
    {.index = eth, .name = "eth0", .hardware = 1, .isRunning = true, .master = bond},
    {.index = wlan, .name = "wlan0", .hardware = 1, .isRunning = true, .isWireless = true},
    {.index = unplugged, .name = "eth1", .hardware = 1, .master = bond},
    // A modem that carries bare IP packets has the hardware type of a tunnel.
    {.index = modem, .name = "wwan0", .hardware = 65534, .isRunning = true, .isCellular = true},
    {.index = bridge, .name = "br0", .hardware = 1, .kind = "bridge", .isRunning = true},
    {.index = port, .name = "eth2", .hardware = 1, .isRunning = true, .master = bridge},
    {.index = guest,
     .name = "veth0",
     .hardware = 1,
     .kind = "veth",
     .isRunning = true,
     .master = hostBridge,
     .lower = wlan},
    {.index = tunnel,
     .name = "tap0",
     .hardware = 1,
     .kind = "tun",
     .isRunning = true,
     .master = bridge},
    {.index = wireguard, .name = "wg0", .hardware = 65534, .kind = "wireguard", .isRunning = true},
    {.index = bond, .name = "bond0", .hardware = 1, .kind = "bond", .isRunning = true},
    {.index = vlan,
     .name = "wlan0.5",
     .hardware = 1,
     .kind = "vlan",
     .isRunning = true,
     .lower = wlan},
    {.index = hostBridge, .name = "docker0", .hardware = 1, .kind = "bridge", .isRunning = true},
    {.index = point, .name = "ppp0", .hardware = 512, .isRunning = true},
};

} // namespace

TEST(NetworkRoutes, NamesTheInterfacesThatPacketsLeaveBy) {
    struct Case {
        const char* what;
        std::vector<int> routes;
        std::vector<int> defaults;
        const char* label;
    };
    const Case cases[] = {
        {"nothing", {}, {}, "Unavailable"},
        {"one", {eth}, {eth}, "Ethernet"},
        {"another for each family", {eth, wlan}, {}, "Wi-Fi + Ethernet"},
        {"a route that stayed without its cable", {unplugged}, {unplugged}, "Unavailable"},
        {"one of two can transmit", {unplugged, wlan}, {}, "Wi-Fi"},
        {"blocked, as by a firewall", {lo}, {}, "Unavailable"},
        {"no answer, but default routes", {}, {unplugged, wlan, eth}, "Wi-Fi"},
        {"a link that is gone by now", {99}, {}, "Unavailable"},
        {"a modem", {modem}, {}, "Cellular"},
        {"a point-to-point connection", {point}, {point}, "Other network"},
        {"a tunnel", {wireguard}, {wireguard, wlan, eth}, "Wi-Fi + Other network"},
        {"a tunnel alone", {wireguard}, {}, "Other network"},
        {"the ports of a bridge, without guests", {bridge}, {}, "Ethernet"},
        {"a guest", {guest}, {}, "Ethernet"},
        {"a bridge with guests only", {hostBridge}, {}, "Ethernet"},
        {"a bond with one link", {bond}, {}, "Ethernet"},
        {"a VLAN", {vlan}, {}, "Wi-Fi"},
    };
    for (const auto& [what, routes, defaults, label] : cases)
        EXPECT_EQ(NetworkRoutes::state({links, routes, defaults}, {}).label(), label) << what;
}

TEST(NetworkRoutes, KnowsWhetherTheConnectionCostsMoney) {
    const auto expensive = [](int route, std::optional<bool> metered) {
        return NetworkRoutes::state({links, {route}, {}}, metered).expensive;
    };
    EXPECT_EQ(expensive(eth, {}), std::nullopt);
    EXPECT_EQ(expensive(eth, true), true);
    EXPECT_EQ(expensive(modem, {}), true);
    EXPECT_EQ(expensive(modem, false), false);
    EXPECT_EQ(expensive(unplugged, true), std::nullopt);
}
