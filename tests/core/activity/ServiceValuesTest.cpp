#include "core/activity/BluetoothObjects.h"
#include "core/activity/NetworkManagerValues.h"

#include <gtest/gtest.h>

using namespace tidemark;
using NetworkManagerValues::AccessPoint;

TEST(NetworkManagerValues, TranslatesFlagsOfAccessPoints) {
    struct Case {
        std::uint32_t flags;
        std::uint32_t wpa;
        std::uint32_t rsn;
        const char* label;
    };
    const Case cases[] = {
        {0, 0, 0, "Open"},
        {1, 0, 0, "WEP"},
        {1, 0x100, 0, "WPA Personal"},
        {1, 0x100, 0x100, "WPA / WPA2 Personal"},
        // These flags also name ciphers.
        {1, 0, 0x188, "WPA2 Personal"},
        {1, 0, 0x500, "WPA2 / WPA3 Personal"},
        {1, 0, 0x400, "WPA3 Personal"},
        {1, 0x200, 0, "WPA Enterprise"},
        {1, 0x200, 0x200, "WPA / WPA2 Enterprise"},
        {1, 0, 0x200, "WPA2 Enterprise"},
        {1, 0, 0x2000, "WPA3 Enterprise"},
        {1, 0, 0x800, "-"},
        // An open network that is paired with an encrypted one (OWE transition).
        {0, 0, 0x1000, "Open"},
        {1, 0, 0x88, "-"},
    };
    for (const auto& [flags, wpa, rsn, label] : cases) {
        const auto reading =
            NetworkManagerValues::reading({.flags = flags, .wpaFlags = wpa, .rsnFlags = rsn});
        const auto words = WiFiDetails::context(reading, false).security;
        EXPECT_EQ(words.value_or("-"), label) << flags << " " << wpa << " " << rsn;
    }
}

TEST(NetworkManagerValues, TranslatesFrequencies) {
    const std::tuple<std::uint32_t, const char*, int> cases[] = {
        {0, "-", 0},          {2412, "2.4 GHz", 1}, {2472, "2.4 GHz", 13}, {2484, "2.4 GHz", 14},
        {4920, "5 GHz", 184}, {5180, "5 GHz", 36},  {5895, "5 GHz", 179},  {5935, "6 GHz", 2},
        {5955, "6 GHz", 1},   {7115, "6 GHz", 233}, {7126, "-", 0},        {60480, "-", 0},
    };
    for (const auto& [frequency, band, channel] : cases) {
        const auto context =
            WiFiDetails::context(NetworkManagerValues::reading({.frequency = frequency}), false);
        EXPECT_EQ(context.band.value_or("-"), band) << frequency;
        EXPECT_EQ(context.channel.value_or(0), channel) << frequency;
    }
    const auto invented =
        NetworkManagerValues::reading({.frequency = 2417, .maxBitrate = 65'000, .bitrate = 5500});
    EXPECT_FALSE(invented.channel || invented.band) << "as with iwd";
    EXPECT_EQ(invented.transmitRate, 5.5);
    EXPECT_EQ(invented.rssi, 0) << "the strength is no number of dBm";
}

TEST(NetworkManagerValues, TranslatesNamesAndStates) {
    const auto name = [](std::optional<std::string> ssid) {
        return NetworkManagerValues::reading({.ssid = std::move(ssid)}).networkName.value_or("-");
    };
    EXPECT_EQ(name("Home"), "Home");
    EXPECT_EQ(name("H\xff"), "H\uFFFDFF");
    for (const auto& hidden : {std::string(), std::string(7, '\0')})
        EXPECT_EQ(name(hidden), "-");
    EXPECT_EQ(name({}), "-");

    std::string links;
    for (const std::uint32_t state : {0U, 10U, 20U, 30U, 60U, 70U, 100U, 110U, 120U}) {
        const auto up = NetworkManagerValues::isLinkUp(state);
        links += !up ? '?' : *up ? 'u' : 'd';
    }
    EXPECT_EQ(links, "??ddduudd");
    std::string metered;
    for (std::uint32_t value = 0; value <= 5; ++value) {
        const auto is = NetworkManagerValues::isMetered(value);
        metered += !is ? '?' : *is ? 'y' : 'n';
    }
    EXPECT_EQ(metered, "?ynyn?");
}

TEST(BluetoothObjects, ListsThePairedDevicesOfPresentAdapters) {
    using namespace BluetoothObjects;
    const std::vector<Adapter> adapters{{"/hci0", false}, {"/hci1", true}};
    const auto paired = pairedDevices(
        adapters, {{.path = "/hci0/dev_B", .address = "B", .alias = "On both", .isPaired = true},
                   {.path = "/hci1/dev_B",
                    .address = "B",
                    .alias = "On both",
                    .isPaired = true,
                    .isConnected = true,
                    .classOfDevice = 0x240404},
                   {.path = "/hci1/dev_A",
                    .address = "A",
                    .alias = "Mouse",
                    .isPaired = true,
                    .classOfDevice = 0,
                    .appearance = 0x03c2},
                   {.path = "/hci1/dev_C", .address = "C", .alias = "Near by"},
                   // A device of the adapter hci10, which is gone. Its path begins with "/hci1".
                   {.path = "/hci10/dev_D", .address = "D", .isPaired = true}});
    EXPECT_EQ(paired,
              (std::vector<BluetoothDevice>{{"A", "Mouse", 5, false}, {"B", "On both", 4, true}}));
    EXPECT_EQ(isPoweredOn(adapters), true);
    EXPECT_EQ(isPoweredOn({{"/hci0", false}}), false);
    EXPECT_EQ(isPoweredOn({}), std::nullopt);
}
