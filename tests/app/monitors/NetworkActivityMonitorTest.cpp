#include "app/monitors/NetworkActivityMonitor.h"

#include "tests/app/support/MonitorFixture.h"

using namespace tidemark;

namespace {

using Availability = NetworkConnectionState::Availability;
using Interface = NetworkConnectionState::Interface;

const auto ethernet = NetworkConnectionState::make(Availability::available, {Interface::ethernet});
const auto nothing = NetworkConnectionState::make(Availability::unavailable, {});

struct Path final : NetworkPathSource {
    bool start(Receive receive) override {
        send = std::move(receive);
        isRunning = works;
        return works;
    }
    void stop() override { isRunning = false; }

    /// Sends a state, also after `stop`: a source that delivers from another thread may do so.
    Receive send;
    bool isRunning = false;
    bool works = true;
};

struct WiFi final : WiFiSource {
    bool start(Names given, Receive receive) override {
        names = given;
        send = std::move(receive);
        return works;
    }
    void stop() override {}
    std::optional<std::string> namesAbsence() const override { return absence; }
    /// Reports one interface, connected to a network, which has a name only if names are read.
    void sendNetwork(const char* name) const {
        WiFiDetails::Reading reading;
        if (names == Names::read)
            reading.networkName = name;
        send(std::vector{Link{{"wlan0", true}, reading}});
    }
    void sendDown() const { send(std::vector{Link{{"wlan0", false}}}); }

    Names names = Names::omit;
    Receive send;
    bool works = true;
    std::optional<std::string> absence;
};

struct Access final : WiFiNameAccess {
    Permission permission() const override { return granted; }
    bool isServiceOn() const override { return true; }
    void request() override { log += "request "; }
    void openSettings() override { log += "settings "; }
    void follow(std::function<void()> to) override { changed = std::move(to); }

    Permission granted = Permission::undetermined;
    std::string log;
    std::function<void()> changed;
};

struct NetworkActivityMonitorTest : test::MonitorFixture {
    NetworkActivityMonitorTest() { create(nullptr); }

    void create(std::unique_ptr<WiFiNameAccess> access) {
        auto ownedPath = std::make_unique<Path>();
        auto ownedWiFi = std::make_unique<WiFi>();
        path = ownedPath.get();
        wifi = ownedWiFi.get();
        monitor.emplace(surroundings,
                        NetworkActivityMonitor::Sources{std::move(ownedPath), std::move(ownedWiFi),
                                                        std::move(access)});
    }
    void turn(bool on) { set(preferenceKeys::networkHistoryEnabled, on); }

    Path* path = nullptr;
    WiFi* wifi = nullptr;
    std::optional<NetworkActivityMonitor> monitor;
};

} // namespace

TEST_F(NetworkActivityMonitorTest, RecordsAPathThatLasts) {
    start(*monitor);
    EXPECT_EQ(*monitor->status, "Establishing a starting point…");
    path->send(ethernet);
    advance(2);
    EXPECT_EQ(*monitor->status, "Observing connection changes · Ethernet");
    path->send(nothing);
    advance(1.5);
    // A repeated state does not begin the wait again.
    path->send(nothing);
    advance(0.5);
    EXPECT_EQ(titles(), "Network Connection Unavailable 2, ");
    EXPECT_EQ(*monitor->status, "Observing connection changes · Unavailable");
    monitor->stop();
    EXPECT_FALSE(path->isRunning);
    EXPECT_EQ(*monitor->wifiStatus, "Paused");
}

TEST_F(NetworkActivityMonitorTest, DropsPendingAndLateReadingsWhenTurnedOff) {
    start(*monitor);
    path->send(ethernet);
    wifi->sendNetwork("Home");
    advance(10);
    const auto stale = path->send;
    const auto staleLinks = wifi->send;
    path->send(nothing);
    wifi->sendDown();
    turn(false);
    EXPECT_FALSE(path->isRunning);
    turn(true);
    stale(nothing);
    staleLinks(std::vector<WiFiSource::Link>{{{"wlan0", false}}});
    advance(10);
    path->send(nothing);
    wifi->sendDown();
    stale(ethernet);
    staleLinks(std::vector<WiFiSource::Link>{{{"wlan0", true}}});
    advance(10);
    EXPECT_EQ(titles(), "");

    workspace.post(notification::didWake);
    advance(NetworkActivityMonitor::wakeDelay - 0.1);
    EXPECT_FALSE(path->isRunning) << "in the first seconds after a wake";
    advance(0.1);
    EXPECT_TRUE(path->isRunning);
}

TEST_F(NetworkActivityMonitorTest, RecordsTheWiFiLinkWithoutNamesUnlessTurnedOn) {
    start(*monitor);
    EXPECT_EQ(*monitor->wifiStatus, "Wi-Fi link observation active");
    wifi->sendNetwork("Home");
    wifi->sendNetwork("Office");
    advance(10);
    wifi->sendDown();
    advance(10);
    EXPECT_EQ(titles(), "Wi-Fi Disconnected 10, ");

    set(preferenceKeys::wifiNetworkNamesEnabled, true);
    EXPECT_EQ(*monitor->wifiDetails().status, "Wi-Fi name access is enabled.");
    wifi->sendNetwork("Home");
    advance(10);
    wifi->sendNetwork("Office");
    advance(10);
    EXPECT_EQ(titles(), "Wi-Fi Connected 20, Wi-Fi Network Changed 30, ");
    EXPECT_EQ(last.detailSubtitle(), "Home → Office");
    wifi->send({});
    wifi->sendNetwork("Home");
    advance(10);
    set(preferenceKeys::wifiNetworkNamesEnabled, false);
    EXPECT_EQ(wifi->names, WiFiSource::Names::omit);
    wifi->sendNetwork("Home");
    advance(10);
    EXPECT_EQ(titles(), "");

    wifi->works = false;
    path->works = false;
    turn(false);
    turn(true);
    EXPECT_EQ(*monitor->status, "Connection observation unavailable");
    EXPECT_EQ(*monitor->wifiStatus, "Wi-Fi link observation unavailable");
}

TEST_F(NetworkActivityMonitorTest, ReportsTheNamesAsAbsentWhereTheyCannotBeRead) {
    using Sources = std::map<SettingSource, ActivityMonitor::Absence>;
    wifi->absence = "There are no names.";
    EXPECT_EQ(monitor->settingSources(),
              (Sources{{SettingSource::network, std::nullopt},
                       {SettingSource::wifiNames, "There are no names."}}));
    EXPECT_EQ(SettingSources({SettingSource::network},
                             {{SettingSource::wifiNames, "There are no names."}})
                  .absence(preferenceKeys::wifiNetworkNamesEnabled.name),
              "There are no names.");
}

TEST_F(NetworkActivityMonitorTest, ReadsNamesOnlyWithThePermissionOfTheSystem) {
    auto owned = std::make_unique<Access>();
    Access& access = *owned;
    create(std::move(owned));
    start(*monitor);
    set(preferenceKeys::wifiNetworkNamesEnabled, true);
    EXPECT_EQ(access.log, "request ");
    EXPECT_EQ(wifi->names, WiFiSource::Names::omit);
    access.granted = WiFiNameAccess::Permission::granted;
    access.changed();
    EXPECT_EQ(wifi->names, WiFiSource::Names::read);
    access.granted = WiFiNameAccess::Permission::denied;
    access.changed();
    EXPECT_EQ(wifi->names, WiFiSource::Names::omit);
    EXPECT_EQ(*monitor->wifiDetails().status,
              "In System Settings → Privacy & Security → Location Services, enable Location "
              "Services and Tidemark.");
    set(preferenceKeys::wifiNetworkNamesEnabled, false);
    set(preferenceKeys::wifiNetworkNamesEnabled, true);
    EXPECT_EQ(access.log, "request settings ");
}
