#include "platform/linux/KernelNetworkPath.h"

#include "tests/app/support/Await.h"
#include "tests/platform/NetworkNamespace.h"
#include "tests/support/TemporaryFolder.h"

#include <cstring>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sys/ioctl.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
using test::networkNamespace::ip;

namespace {

/// Opens a tunnel, as the program of a VPN does. It is removed when the descriptor is closed.
FileDescriptor openTunnel(const char* name) {
    FileDescriptor tunnel(::open("/dev/net/tun", O_RDWR | O_CLOEXEC));
    ifreq request{};
    request.ifr_flags = IFF_TUN | IFF_NO_PI;
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    EXPECT_EQ(::ioctl(tunnel.get(), TUNSETIFF, &request), 0) << std::strerror(errno);
    return tunnel;
}

/// The interfaces of this process's namespace, without a message bus.
struct KernelNetworkPathTest : testing::Test {
    void follow() {
        path.start([this](const NetworkConnectionState& state) { last = state; });
    }
    void expectLabel(const std::string& label) {
        test::until([&] { return last && last->label() == label; });
        EXPECT_EQ(last->label(), label);
    }
    static void plugIn() {
        ip("link add cable type veth peer name switch");
        ip("addr add 10.0.0.1/24 dev cable");
        ip("link set cable up");
        ip("link set switch up");
        ip("route add default via 10.0.0.2");
    }

    std::optional<NetworkConnectionState> last;
    KernelNetworkPath path{[] { return MessageBus(QDBusConnection(u"none"_s)); }};
};

} // namespace

TEST_F(KernelNetworkPathTest, DropsAReadingThatBeganBeforeAStop) {
    TIDEMARK_RUN_IN_NETWORK_NAMESPACE();
    follow();
    path.stop();
    plugIn();
    std::vector<std::string> labels;
    path.start([&](const NetworkConnectionState& state) { labels.push_back(state.label()); });
    test::until([&] { return !labels.empty(); });
    EXPECT_EQ(labels.front(), "Ethernet");
}

TEST_F(KernelNetworkPathTest, FollowsRoutesLinksAndTunnels) {
    TIDEMARK_RUN_IN_NETWORK_NAMESPACE();
    follow();
    expectLabel("Unavailable");
    plugIn();
    expectLabel("Ethernet");
    // Without its cable the interface can't transmit, but the route stays.
    ip("link set switch down");
    expectLabel("Unavailable");
    ip("link set switch up");
    expectLabel("Ethernet");

    {
        const FileDescriptor tunnel = openTunnel("vpn");
        ip("link set vpn up");
        ip("route add 0.0.0.0/1 dev vpn");
        ip("route add 128.0.0.0/1 dev vpn");
        expectLabel("Ethernet + Other network");
    }
    // The kernel reports no removal of the routes of an interface that is removed.
    expectLabel("Ethernet");
    const FileDescriptor tunnel = openTunnel("vpn");
    ip("link set vpn up");
    ip("route add default dev vpn table 100");
    ip("rule add to all lookup 100");
    expectLabel("Ethernet + Other network");
    ip("rule del lookup 100");
    expectLabel("Ethernet");

    ip("-6 addr add fd00::1/64 dev cable nodad");
    ip("-6 route add default via fd00::2 dev cable");
    ip("route del default");
    ip("-6 route del default");
    expectLabel("Unavailable");
    ip("-6 route add default via fd00::2 dev cable");
    expectLabel("Ethernet");
}

TEST_F(KernelNetworkPathTest, SeesThroughBridgesAndBlockedAddresses) {
    TIDEMARK_RUN_IN_NETWORK_NAMESPACE();
    plugIn();
    ip("route add blackhole 192.0.2.0/24");
    ip("-6 route add blackhole 2001:db8::/32");
    follow();
    expectLabel("Ethernet");
    ip("link add lan0 type bridge");
    ip("link set lan0 up");
    ip("link set cable master lan0");
    ip("addr flush dev cable");
    expectLabel("Unavailable");
    ip("addr add 10.0.0.1/24 dev lan0");
    ip("route add default via 10.0.0.2");
    expectLabel("Ethernet");

    const auto links = kernelRoutes::links();
    const auto link = [&](const char* name) {
        return *std::ranges::find(links, name, &NetworkRoutes::Link::name);
    };
    EXPECT_EQ(link("lan0").kind, "bridge");
    EXPECT_EQ(link("cable").master, link("lan0").index);
    EXPECT_EQ(link("cable").hardware, 1);
}

TEST_F(KernelNetworkPathTest, SurvivesMoreChangesThanTheKernelCanReport) {
    TIDEMARK_RUN_IN_NETWORK_NAMESPACE();
    plugIn();
    follow();
    expectLabel("Ethernet");
    const test::TemporaryFolder folder;
    std::string routes;
    for (int i = 0; i < 20'000; ++i)
        routes += "route add blackhole 172." + std::to_string(16 + i / 65536) + "."
                  + std::to_string(i / 256 % 256) + "." + std::to_string(i % 256) + "\n";
    folder.write("routes", routes);
    // The event loop does not run meanwhile.
    ip(("-batch " + (folder / "routes").native()).c_str());
    ip("route del default");
    expectLabel("Unavailable");
    path.stop();
    ip("route add default via 10.0.0.2");
    test::settle();
    EXPECT_EQ(last->label(), "Unavailable");
}
