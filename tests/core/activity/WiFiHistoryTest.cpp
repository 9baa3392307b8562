#include "core/activity/NamedWiFiHistory.h"
#include "core/activity/WiFiDetails.h"
#include "core/activity/WiFiLinkHistory.h"

#include <limits>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

WiFiObservation network(std::optional<std::string> name, std::int64_t channel = 1) {
    WiFiContext context;
    context.networkName = std::move(name);
    context.channel = channel;
    return {true, context};
}

const WiFiObservation nameless{true, std::nullopt};
const WiFiObservation down{false, std::nullopt};

} // namespace

TEST(NamedWiFiHistory, ReportsChangesOfTheLinkAndOfItsName) {
    struct Case {
        const char* what;
        /// Ten seconds apart.
        std::vector<std::optional<WiFiObservation>> observations;
        /// The index and title of each record.
        const char* titles;
    };
    const Case cases[] = {
        {"another channel", {network("A"), network("A", 6)}, ""},
        {"another network", {network("A"), network("B")}, "1 Wi-Fi Network Changed,"},
        {"another without names", {network({}), network({}, 6), nameless}, ""},
        {"lost", {network("A"), down, down}, "1 Wi-Fi Disconnected,"},
        {"found", {down, network("A"), network("A")}, "1 Wi-Fi Connected,"},
        {"a name appears", {nameless, network("A"), network("B")}, "2 Wi-Fi Network Changed,"},
        {"a name vanishes", {network("A"), network({}), down}, "2 Wi-Fi Disconnected,"},
        {"a gap", {network("A"), {}, network("B"), down}, "3 Wi-Fi Disconnected,"},
    };
    for (const auto& [what, observations, titles] : cases) {
        NamedWiFiHistory history;
        std::string story;
        for (std::size_t i = 0; i < observations.size(); ++i) {
            const Date at{static_cast<double>(i) * 10};
            if (!history.receive(observations[i], at))
                continue;
            if (const auto record = history.settle(at + NamedWiFiHistory::delay))
                story += std::to_string(i) + " " + record->title() + ",";
        }
        EXPECT_EQ(story, titles) << what;
    }
}

TEST(NamedWiFiHistory, WaitsAndRecordsBothNetworks) {
    NamedWiFiHistory history;
    EXPECT_FALSE(history.receive(network("A"), Date{0}));
    EXPECT_TRUE(history.receive(down, Date{10}));
    EXPECT_TRUE(history.receive(network("A", 6), Date{11}));
    EXPECT_EQ(history.settle(Date{20}), std::nullopt) << "down for only a second";

    EXPECT_TRUE(history.receive(network("B"), Date{20}));
    EXPECT_FALSE(history.receive(network("B", 6), Date{21}));
    EXPECT_EQ(history.settle(Date{21.9}), std::nullopt);
    const auto joined = history.settle(Date{22});
    ASSERT_TRUE(joined);
    auto expected = SystemActivity::observed(SystemActivity::Kind::wifiChanged, Date{20});
    expected.id = joined->id;
    expected.wifiConnected = true;
    expected.previousWiFi.emplace(network("A").context.value());
    expected.wifiContext.emplace(network("B").context.value());
    EXPECT_EQ(*joined, expected);

    history.receive(down, Date{30});
    const auto gone = history.settle(Date{32});
    ASSERT_TRUE(gone);
    EXPECT_EQ(gone->wifiContext, network("B").context.value()) << "the previous network";

    history.receive(network("B"), Date{40});
    EXPECT_TRUE(history.receive(std::nullopt, Date{41})) << "the wait is cancelled";
    EXPECT_EQ(history.settle(Date{50}), std::nullopt);
    history.receive(network("B"), Date{60});
    history.receive(network("C"), Date{70});
    EXPECT_FALSE(history.receive(network({}), Date{71}));
    EXPECT_EQ(history.settle(Date{80}), std::nullopt)
        << "a name that becomes unreadable cancels a change";
}

TEST(WiFiLinkHistory, ReportsChangesOfTheLink) {
    WiFiLinkHistory history;
    EXPECT_TRUE(history.receive(true, Date{0}));
    EXPECT_FALSE(history.receive(true, Date{1}));
    EXPECT_TRUE(history.receive(false, Date{10}));
    EXPECT_EQ(history.settle(Date{11.9}), std::nullopt);
    const auto record = history.settle(Date{12});
    ASSERT_TRUE(record);
    EXPECT_EQ(record->timestamp, Date{10});
    EXPECT_EQ(record->wifiConnected, false);
    EXPECT_TRUE(history.receive(std::nullopt, Date{20}));
    EXPECT_TRUE(history.receive(true, Date{21}));
    EXPECT_EQ(history.settle(Date{30}), std::nullopt) << "a new starting point";
}

TEST(WiFiDetails, LabelsBandsAndSecurity) {
    std::string bands;
    for (int number = -1; number <= 4; ++number)
        bands += WiFiDetails::bandLabel(number).value_or("-") + ",";
    EXPECT_EQ(bands, "-,-,2.4 GHz,5 GHz,6 GHz,-,");
    std::string securities;
    for (int number = -1; number <= 14; ++number)
        securities += WiFiDetails::securityLabel(number).value_or("-") + ",";
    EXPECT_EQ(securities,
              "-,Open,WEP,WPA Personal,WPA / WPA2 Personal,WPA2 Personal,-,-,WPA Enterprise,"
              "WPA / WPA2 Enterprise,WPA2 Enterprise,-,WPA3 Personal,WPA3 Enterprise,"
              "WPA2 / WPA3 Personal,-,");
    constexpr std::int64_t unknown = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(WiFiDetails::securityLabel(unknown), std::nullopt);
}

TEST(WiFiDetails, LeavesOutUnknownValues) {
    const WiFiDetails::Reading reading{2, 36, 4, 866.5, -60, "Home"};
    EXPECT_EQ(WiFiDetails::context(reading, true),
              (WiFiContext{"Home", "5 GHz", 36, "WPA2 Personal", -60, 866.5}));
    EXPECT_EQ(WiFiDetails::context(reading, false),
              (WiFiContext{{}, "5 GHz", 36, "WPA2 Personal", -60, 866.5}));
    for (const double rate : {0.0, -1.0, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(WiFiDetails::context({{}, {}, {}, rate, 0, {}}, true), WiFiContext{}) << rate;
}

TEST(WiFiDetails, CombinesTheLinksOfAllInterfaces) {
    using WiFiDetails::Link;
    const std::pair<std::vector<WiFiDetails::Interface>, std::optional<Link>> cases[] = {
        {{}, {}},
        {{{"a", false}}, Link{}},
        {{{"a", {}}}, {}},
        {{{"a", false}, {"b", {}}}, {}},
        {{{"a", true}, {"b", false}, {"c", {}}}, Link{true, "a"}},
        {{{"a", true}, {"b", true}}, Link{true, "b"}},
    };
    for (const auto& [interfaces, link] : cases)
        EXPECT_EQ(WiFiDetails::link(interfaces), link) << interfaces.size();
}
