#include "core/activity/ActivityEventBuilder.h"

#include "tests/support/SharedRecords.h"

#include <functional>

#include <gtest/gtest.h>

using namespace tidemark;
using Kind = SystemActivity::Kind;
using State = NetworkConnectionState;
using enum NetworkConnectionState::Interface;

namespace {

SystemActivity at(Kind kind, double seconds = 100) {
    return SystemActivity::observed(kind, {seconds});
}
SystemActivity with(Kind kind, const std::function<void(SystemActivity&)>& arrange) {
    auto activity = at(kind);
    arrange(activity);
    return activity;
}

SystemActivity environment(Kind kind, std::string name, std::optional<bool> connected,
                           EnvironmentActivity payload = {}) {
    auto activity = at(kind);
    payload.deviceName = std::move(name);
    payload.connected = connected;
    activity.environmentActivity.emplace(std::move(payload));
    return activity;
}
SystemActivity thermal(const std::string& before, const std::string& state) {
    EnvironmentActivity payload;
    payload.previousState = before;
    payload.state = state;
    return environment(Kind::thermalChanged, "This Mac", {}, std::move(payload));
}
SystemActivity display(std::optional<bool> connected) {
    EnvironmentActivity payload;
    payload.display = DisplayContext{5120, 2880, 2560, 1440, 2, 60, false};
    return environment(Kind::displayChanged, "Studio", connected, std::move(payload));
}
SystemActivity wifiLink(std::optional<bool> connected, std::optional<std::string> name = {},
                        std::optional<std::string> previous = {}, double seconds = 100) {
    auto activity = at(Kind::wifiChanged, seconds);
    activity.wifiConnected = connected;
    WiFiContext joined;
    joined.networkName = std::move(name);
    activity.wifiContext.emplace(std::move(joined));
    WiFiContext left;
    left.networkName = std::move(previous);
    activity.previousWiFi.emplace(std::move(left));
    return activity;
}
State online(std::set<State::Interface> interfaces) {
    return State::make(State::Availability::available, std::move(interfaces));
}
State offline() {
    return State::make(State::Availability::unavailable, {});
}
SystemActivity network(State before, State after, double seconds = 100) {
    auto activity = at(Kind::networkChanged, seconds);
    activity.networkChange.emplace({std::move(before), std::move(after)});
    return activity;
}
SystemActivity bluetooth(bool connected, std::optional<std::string> deviceClass) {
    auto activity = at(Kind::bluetoothChanged);
    activity.bluetoothChange.emplace({std::move(deviceClass), {}, "Pods", connected});
    return activity;
}
SystemActivity battery(BatteryActivity::Kind kind, std::optional<std::int64_t> level) {
    auto activity = at(Kind::batteryChanged);
    activity.batteryActivity.emplace({kind, {}, {}, {true, level, {}, {}}});
    return activity;
}
SystemActivity wokeAfter(double seconds) {
    auto activity = at(Kind::woke);
    activity.observedSession = {Date{0}, Date{seconds}, {}, {}};
    activity.powerObservation = {true, 50, {}, {}};
    return activity;
}

std::string worded(const SystemActivity& activity) {
    const Event event = ActivityEventBuilder::event(Shared(SystemActivity(activity)));
    return event.title + " | " + event.subtitle + " | " + event.symbol;
}

const std::string recorded = "Recorded while Tidemark was running";

/// The kinds of the built events.
std::string kinds(const std::vector<SystemActivity>& activities) {
    std::string text;
    for (const auto& event : ActivityEventBuilder::build(test::shared(activities)))
        text += std::string(rawValue(event->systemActivity->kind)) + " ";
    return text;
}

} // namespace

TEST(SystemActivity, HasTitleSubtitleAndSymbol) {
    using enum BatteryActivity::Kind;
    const auto lowPower = [](bool on) {
        return with(Kind::lowPowerModeChanged, [=](auto& a) { a.lowPowerModeEnabled = on; });
    };
    const auto radio = [](bool on) {
        return with(Kind::bluetoothPowerChanged, [=](auto& a) { a.bluetoothPoweredOn = on; });
    };
    const std::pair<SystemActivity, std::string> cases[] = {
        {at(Kind::sleepRequested), "Mac Going to Sleep | " + recorded + " | moon.zzz"},
        {with(Kind::sleepRequested, [](auto& a) { a.powerObservation = {false, 7, {}, {}}; }),
         "Mac Going to Sleep | Battery at 7% | moon.zzz"},
        {wokeAfter(-5), "Mac Woke Up | Sleep interval: Under a minute | sun.max"},
        {wokeAfter(59), "Mac Woke Up | Sleep interval: Under a minute | sun.max"},
        {wokeAfter(60), "Mac Woke Up | Sleep interval: 1 min | sun.max"},
        {wokeAfter(3599), "Mac Woke Up | Sleep interval: 59 min | sun.max"},
        {wokeAfter(3600), "Mac Woke Up | Sleep interval: 1 hr 0 min | sun.max"},
        {wokeAfter(1e300), "Mac Woke Up | Sleep interval: 16666666666666 hr 40 min | sun.max"},
        {environment(Kind::volumeChanged, "Backup", true),
         "Backup Mounted | " + recorded + " | externaldrive"},
        {environment(Kind::volumeChanged, "Backup", {}),
         "Backup Unmounted | " + recorded + " | externaldrive"},
        {at(Kind::volumeChanged), "Volume Unmounted | " + recorded + " | externaldrive"},
        {display(true), "Studio Connected | 5120 × 2880 pixels · 2560 × 1440 points | display"},
        {display({}),
         "Studio Configuration Changed | 5120 × 2880 pixels · 2560 × 1440 points | display"},
        {at(Kind::displayChanged), "Display Configuration Changed | " + recorded + " | display"},
        {thermal("nominal", "serious"),
         "High Thermal Pressure | Nominal → Serious | thermometer.medium"},
        {thermal("very LOW", "critical"),
         "Critical Thermal Pressure | Very Low → Critical | thermometer.medium"},
        {at(Kind::thermalChanged),
         "Thermal Pressure Eased | " + recorded + " | thermometer.medium"},
        {network(offline(), online({ethernet, wifi})),
         "Network Connection Available | Unavailable → Wi-Fi + Ethernet | network"},
        {network(online({}), State::make(State::Availability::connectionRequired, {cellular})),
         "Network Connection Unavailable | Available → Connection required | wifi.slash"},
        {at(Kind::networkChanged), "Network Connection Changed | " + recorded + " | wifi.slash"},
        {bluetooth(true, "Headphones"),
         "Pods Connected | Bluetooth · Headphones | antenna.radiowaves.left.and.right"},
        {bluetooth(false, {}),
         "Pods Disconnected | Bluetooth · Paired device | antenna.radiowaves.left.and.right"},
        {radio(true), "Bluetooth Turned On | " + recorded + " | antenna.radiowaves.left.and.right"},
        {radio(false),
         "Bluetooth Turned Off | " + recorded + " | antenna.radiowaves.left.and.right"},
        {wifiLink(true), "Wi-Fi Connected | Wi-Fi link · " + recorded + " | wifi"},
        {wifiLink(true, "Home"), "Wi-Fi Connected | Home | wifi"},
        {wifiLink(true, "Home", "Home"), "Wi-Fi Connected | Home | wifi"},
        {wifiLink(true, "Home", "Café"), "Wi-Fi Network Changed | Café → Home | wifi"},
        {wifiLink(true, {}, "Café"), "Wi-Fi Connected | Wi-Fi link · " + recorded + " | wifi"},
        {wifiLink(false, "Home", "Café"), "Wi-Fi Disconnected | Home | wifi.slash"},
        {wifiLink({}), "Wi-Fi Disconnected | Wi-Fi link · " + recorded + " | wifi.slash"},
        {battery(powerConnected, 80), "Power Connected | Battery at 80% | powerplug"},
        {battery(low, {}), "Battery Low | " + recorded + " | battery.50percent"},
        {at(Kind::batteryChanged), "Battery Changed | " + recorded + " | battery.50percent"},
        {lowPower(true), "Low Power Mode Enabled | " + recorded + " | leaf"},
        {lowPower(false), "Low Power Mode Disabled | " + recorded + " | leaf"},
    };
    for (const auto& [activity, words] : cases)
        EXPECT_EQ(worded(activity), words);
}

TEST(ActivityEventBuilder, MakesAnEventOfARecord) {
    EnvironmentActivity payload;
    payload.path = "/Volumes/Backup";
    payload.volume.emplace();
    auto activity = environment(Kind::volumeChanged, "Backup", true, std::move(payload));
    Event expected;
    expected.id = "activity-" + activity.id.text();
    expected.timestamp = expected.intervalStart = activity.timestamp;
    expected.title = "Backup Mounted";
    expected.subtitle = recorded;
    expected.category = EventCategory::system;
    expected.path = "/Volumes/Backup";
    expected.symbol = "externaldrive";
    const Shared record(std::move(activity));
    expected.systemActivity = record;
    const Event event = ActivityEventBuilder::event(record);
    EXPECT_EQ(event, expected);
    EXPECT_EQ(event.systemActivity.object(), record.object()) << "a copy of each record";
}

TEST(ActivityEventBuilder, KeepsTheOrderAndLeavesOutKindsThatAreNotShown) {
    EXPECT_EQ(kinds({}), "");
    EXPECT_EQ(kinds({at(Kind::woke, 3), at(Kind::powerOffRequested, 2), at(Kind::woke, 1),
                     at(Kind::sleepRequested, 9)}),
              "woke woke sleepRequested ");
}

TEST(ActivityEventBuilder, ReportsALossOfTheWiFiOnce) {
    const State onDemand = State::make(State::Availability::connectionRequired, {});
    const State radio = online({wifi});
    const std::tuple<const char*, SystemActivity, SystemActivity, bool> cases[] = {
        {"lost, just before", network(radio, offline(), 96), wifiLink(false), true},
        {"lost, at the edge", network(radio, offline(), 95), wifiLink(false), true},
        {"lost, beyond the edge", network(radio, offline(), 94.9), wifiLink(false), false},
        {"lost, after", network(radio, offline(), 105), wifiLink(false), true},
        {"lost, long after", network(radio, offline(), 105.1), wifiLink(false), false},
        {"lost, the link came", network(radio, offline()), wifiLink(true), false},
        {"lost, nothing known of the link", network(radio, offline()), wifiLink({}), false},
        {"lost, now waits to be connected", network(radio, onDemand), wifiLink(false), true},
        {"found", network(offline(), radio), wifiLink(true), true},
        {"found, the link went", network(offline(), radio), wifiLink(false), false},
        {"a cable", network(online({ethernet}), offline()), wifiLink(false), false},
        {"both", network(online({ethernet, wifi}), offline()), wifiLink(false), false},
        {"no known way", network(online({}), offline()), wifiLink(false), false},
        {"another way", network(radio, online({ethernet})), wifiLink(false), false},
        {"never there", network(offline(), onDemand), wifiLink(false), false},
        {"nothing known", at(Kind::networkChanged), wifiLink(false), false},
    };
    for (const auto& [what, network, link, isOne] : cases) {
        EXPECT_EQ(kinds({network, link}), isOne ? "wifiChanged " : "networkChanged wifiChanged ")
            << what;
        EXPECT_EQ(kinds({link, network}), isOne ? "wifiChanged " : "wifiChanged networkChanged ")
            << what;
    }
}

TEST(ActivityEventBuilder, FindsTheLinkChangeAmongMany) {
    const State radio = online({wifi});
    std::vector<SystemActivity> activities;
    std::string expected;
    // Not in order of time, and with opposite link changes in between.
    for (const double hour : {5, 1, 4, 2, 3}) {
        const double time = hour * 3600;
        activities.push_back(wifiLink(true, {}, {}, time + 1));
        activities.push_back(wifiLink(false, {}, {}, time + 4));
        activities.push_back(network(radio, offline(), time));
        activities.push_back(network(radio, offline(), time + 1000));
        expected += "wifiChanged wifiChanged networkChanged ";
    }
    EXPECT_EQ(kinds(activities), expected);
}
