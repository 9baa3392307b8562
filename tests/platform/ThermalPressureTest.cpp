#include "platform/linux/ThermalPressure.h"

#include "platform/linux/NetlinkSocket.h"
#include "platform/linux/ThermalWatch.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <bit>
#include <numeric>

#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <sys/socket.h>

using namespace tidemark;

namespace {

/// A folder in the shape of /sys.
struct Sys {
    const test::TemporaryFolder folder;

    void write(const std::string& file, const std::string& value) const {
        folder.write("class/thermal/" + file, value + "\n");
    }
    /// Adds a zone. `trips` are pairs of a type and a temperature in °C.
    void zone(int number, const std::string& type, int degrees,
              const std::vector<std::pair<std::string, int>>& trips) const {
        const std::string zone = "thermal_zone" + std::to_string(number) + "/";
        write(zone + "type", type);
        write(zone + "mode", "enabled");
        heat(number, degrees);
        for (std::size_t i = 0; i < trips.size(); ++i) {
            const std::string trip = zone + "trip_point_" + std::to_string(i);
            write(trip + "_type", trips[i].first);
            write(trip + "_temp", std::to_string(trips[i].second * 1000));
        }
    }
    void heat(int number, int degrees) const {
        write("thermal_zone" + std::to_string(number) + "/temp", std::to_string(degrees * 1000));
    }
    ThermalZones read() const { return ThermalZones::read(folder.path()); }
};

const std::vector<std::pair<std::string, int>> usualTrips{
    {"active", 60}, {"passive", 80}, {"hot", 95}, {"critical", 105}};

} // namespace

TEST(ThermalZones, IgnoresImpossibleValues) {
    const Sys sys;
    sys.zone(0, "acpitz", 40, usualTrips);
    sys.zone(1, "iwlwifi_1", 90, usualTrips);
    sys.zone(2, "x86_pkg_temp", 500, {});
    sys.zone(3, "cpu-thermal", 50,
             {{"passive", 0}, {"hot", -274}, {"critical", -32768}, {"critical", 200}});
    sys.zone(4, "soc-thermal", 50, {});
    sys.write("thermal_zone4/mode", "disabled");
    sys.zone(5, "TCPU", 50, {});
    sys.write("thermal_zone5/temp", "");
    sys.zone(6, "gpu-thermal", 90, usualTrips);
    sys.write("thermal_zone0/trip_point_1_hyst", "7000");
    sys.write("cooling_device0/type", "intel_powerclamp");
    sys.write("cooling_device0/cur_state", "-1");
    sys.write("cooling_device1/type", "Fan");
    sys.write("cooling_device1/cur_state", "3");
    const auto reading = sys.read();
    ASSERT_EQ(reading.zones.size(), 2U);
    EXPECT_EQ(reading.zones[0].name, "thermal_zone0");
    EXPECT_EQ(reading.zones[0].temperature, 40);
    ASSERT_EQ(reading.zones[0].trips.size(), 4U);
    EXPECT_EQ(reading.zones[0].trips[1].hysteresis, 7);
    EXPECT_TRUE(reading.zones[1].trips.empty());
    EXPECT_FALSE(reading.isSlowedDown);
    sys.write("cooling_device2/type", "Processor");
    sys.write("cooling_device2/cur_state", "1");
    EXPECT_TRUE(sys.read().isSlowedDown);
    EXPECT_TRUE(ThermalZones::read("/does/not/exist").zones.empty());
}

TEST(ThermalPressure, CountsOnlyStatesThatLast) {
    const Sys sys;
    sys.zone(0, "x86_pkg_temp", 50, usualTrips);
    // The firmware claims that this machine has been too hot since its start.
    sys.zone(1, "acpitz", 41, {{"hot", 20}, {"critical", 21}});
    ThermalPressure pressure;
    EXPECT_EQ(pressure.state(), std::nullopt);
    struct Step {
        double at;
        int degrees;
        const char* state;
        bool isChanging;
    };
    const Step steps[] = {
        {0, 50, "nominal", false},
        // The heat is too brief to count.
        {30, 85, "nominal", true},
        {35, 50, "nominal", false},
        {60, 101, "nominal", true},
        {65, 85, "nominal", true},
        // The mildest of the states that were read meanwhile counts.
        {70, 101, "serious", false},
        {71, 101, "serious", true},
        {81, 101, "critical", false},
        // Below the trip, but not by enough.
        {100, 91, "critical", false},
        {200, 91, "critical", false},
        {210, 70, "critical", true},
        {269, 50, "critical", true},
        {270, 50, "fair", false},
        {271, 50, "fair", true},
        {331, 50, "nominal", false},
    };
    for (const auto& [at, degrees, state, isChanging] : steps) {
        sys.heat(0, degrees);
        pressure.receive(sys.read(), false, at);
        EXPECT_EQ(pressure.state(), state) << at;
        EXPECT_EQ(pressure.isChanging(), isChanging) << at;
    }
    // The machine is slowed down although no zone is hot: as the daemon, the processor itself or a
    // cooling device reports.
    const auto seriousAfter = [&](ThermalZones reading, bool isTooHot) {
        ThermalPressure other;
        other.receive(sys.read(), false, 0);
        other.receive(reading, isTooHot, 10);
        reading.throttled *= 2;
        other.receive(reading, isTooHot, 20);
        return other.state() == "serious";
    };
    auto reading = sys.read();
    EXPECT_FALSE(seriousAfter(reading, false));
    EXPECT_TRUE(seriousAfter(reading, true));
    reading.throttled = 400;
    EXPECT_TRUE(seriousAfter(reading, false));
    reading.throttled = 0;
    reading.isSlowedDown = true;
    EXPECT_TRUE(seriousAfter(reading, false));
    pressure.receive({}, false, 400);
    EXPECT_EQ(pressure.state(), std::nullopt);
}

TEST(ThermalWatch, ReadsAtIntervals) {
    const Sys sys;
    test::ManualAppClock clock;
    int changes = 0;
    ThermalWatch watch(sys.folder.path(), QDBusConnection(QStringLiteral("none")), clock,
                       [&] { ++changes; });
    const auto next = [&](double seconds) {
        test::until([&] { return clock.sleeping() > 0; });
        clock.advance(seconds);
        test::until([&] { return clock.sleeping() > 0; });
        return watch.state();
    };
    EXPECT_EQ(next(0), std::nullopt);
    sys.zone(0, "acpitz", 50, usualTrips);
    EXPECT_EQ(next(ThermalWatch::intervalWithoutZones), "nominal");
    sys.heat(0, 85);
    EXPECT_EQ(next(ThermalWatch::interval), "nominal");
    EXPECT_EQ(next(ThermalWatch::intervalWhileChanging), "serious");
    EXPECT_EQ(changes, 2);
}

TEST(ThermalWatch, ReadsEarlyOnceAfterMessagesOfTheKernel) {
    const Sys sys;
    sys.zone(0, "acpitz", 50, usualTrips);
    test::ManualAppClock clock;
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    const FileDescriptor kernel(ends[0]);
    ThermalWatch watch(
        sys.folder.path(), QDBusConnection(QStringLiteral("none")), clock, [] {},
        [&] { return FileDescriptor(ends[1]); });
    const auto untilState = [&](std::optional<std::string_view> expected) {
        test::until([&] { return watch.state() == expected && clock.sleeping() > 0; });
    };
    const auto sendMessage = [&] { ASSERT_EQ(::send(kernel.get(), "trip", 4, 0), 4); };
    untilState("nominal");
    for (int round = 0; round < 2; ++round) {
        // The absence of all zones counts at once, unlike a change of temperature.
        std::filesystem::remove_all(sys.folder / "class");
        sendMessage();
        untilState(std::nullopt);
        sys.zone(0, "acpitz", 50, usualTrips);
        sendMessage();
        test::settle();
        EXPECT_EQ(watch.state(), std::nullopt);
        clock.advance(ThermalWatch::intervalWithoutZones);
        untilState("nominal");
    }
}

TEST(ThermalEvents, AreReceivedFromTheKernel) {
    const auto events = thermalEvents::open();
    if (!events)
        GTEST_SKIP() << "the kernel sends no messages about thermal zones";
    // No event can be caused here, so the test checks only that the socket has joined one group of
    // generic netlink.
    std::array<std::uint32_t, 64> groups{};
    socklen_t size = sizeof groups;
    ASSERT_EQ(
        ::getsockopt(events.get(), SOL_NETLINK, NETLINK_LIST_MEMBERSHIPS, groups.data(), &size), 0);
    const auto joined = [](int sum, std::uint32_t word) { return sum + std::popcount(word); };
    EXPECT_EQ(std::accumulate(groups.begin(), groups.end(), 0, joined), 1);
    NetlinkSocket::discardAll(events.get());
}
