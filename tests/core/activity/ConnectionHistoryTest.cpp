#include "core/activity/BluetoothConnectionHistory.h"
#include "core/activity/NetworkConnectionHistory.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

using Availability = NetworkConnectionState::Availability;
using Interface = NetworkConnectionState::Interface;

const auto onWifi = NetworkConnectionState::make(Availability::available, {Interface::wifi}, false);
const auto metered = NetworkConnectionState::make(Availability::available, {Interface::wifi}, true);
const auto noNetwork =
    NetworkConnectionState::make(Availability::unavailable, {Interface::wifi}, false);

} // namespace

TEST(NetworkConnectionHistory, ReportsDifferencesThatLast) {
    NetworkConnectionHistory history;
    EXPECT_TRUE(history.receive(onWifi, Date{0}));
    EXPECT_EQ(history.settle(Date{2}), std::nullopt) << "the starting point";
    EXPECT_TRUE(history.receive(noNetwork, Date{10}));
    EXPECT_TRUE(history.receive(onWifi, Date{11}));
    EXPECT_EQ(history.settle(Date{13}), std::nullopt) << "a moment without a connection";

    EXPECT_TRUE(history.receive(metered, Date{20}));
    EXPECT_FALSE(history.receive(metered, Date{21})) << "a repetition does not restart the wait";
    EXPECT_EQ(history.settle(Date{21.9}), std::nullopt);
    const auto record = history.settle(Date{22});
    ASSERT_TRUE(record);
    auto expected = SystemActivity::observed(SystemActivity::Kind::networkChanged, Date{20});
    expected.id = record->id;
    expected.networkChange.emplace({onWifi, metered});
    EXPECT_EQ(*record, expected);

    const auto unknown = NetworkConnectionState::make(Availability::available, {Interface::wifi});
    for (const auto& [at, state] : {std::pair{23.0, unknown}, {26.0, onWifi}}) {
        EXPECT_TRUE(history.receive(state, Date{at}));
        EXPECT_EQ(history.settle(Date{at + 2}), std::nullopt)
            << "whether it costs money became unknown or known";
    }

    history.reset();
    EXPECT_TRUE(history.receive(onWifi, Date{30})) << "after a reset, no value is accepted";
    EXPECT_EQ(history.settle(Date{32}), std::nullopt);
}

TEST(BluetoothConnectionHistory, TreatsTheFirstReportOfANewDeviceAsAChange) {
    for (const bool connected : {true, false}) {
        BluetoothConnectionHistory history;
        EXPECT_TRUE(history.receive({"A", "Headset", 4, connected}, Date{0}));
        // The record has the name and the class that were reported last.
        EXPECT_FALSE(history.receive({"A", "Renamed", 0, connected}, Date{1}));
        const auto record = history.settle("A", Date{5});
        ASSERT_TRUE(record);
        EXPECT_EQ(record->bluetoothChange,
                  (BluetoothConnectionChange{{}, {}, "Renamed", connected}));
    }
}

TEST(BluetoothDevice, HasADisplayNameAndAClass) {
    const auto nameOf = [](const std::string& name) {
        return BluetoothDevice{"", name, 0, {}}.displayName();
    };
    EXPECT_EQ(nameOf(" \n\u2003Mouse\r\n"), "Mouse");
    EXPECT_EQ(nameOf(""), "Bluetooth Device");
    EXPECT_EQ(nameOf("\t \n"), "Bluetooth Device");
    EXPECT_EQ(nameOf(" " + std::string(121, 'a')), std::string(120, 'a'));
    // A letter and its accent are one character.
    std::string accents;
    for (int i = 0; i < 120; ++i)
        accents += "e\u0301";
    EXPECT_EQ(nameOf(accents + "e\u0301"), accents);
    EXPECT_EQ(BluetoothDevice::majorClassOf(0x240404), 4U) << "a headset";
    EXPECT_EQ(BluetoothDevice::majorClassOf(0x002540), 5U) << "a keyboard";
}
