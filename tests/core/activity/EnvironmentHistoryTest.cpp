#include "core/activity/EnvironmentHistory.h"

#include "core/activity/ThermalState.h"

#include <limits>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

using Entries = EnvironmentHistory::Entries;

const DisplayContext mode{2560, 1440, 1280, 720, 2, 60.0, false};

Entries volumes(std::initializer_list<const char*> paths) {
    Entries entries;
    for (const char* path : paths)
        entries[path] = volumeEntry(path, std::nullopt);
    return entries;
}

Entries display(std::optional<DisplayContext> shown, const char* name = "Screen") {
    return {{"7", displayEntry(name, shown)}};
}

std::string titlesOf(const std::vector<SystemActivity>& records) {
    std::string titles;
    for (const auto& record : records)
        titles += record.title() + ", ";
    return titles;
}

} // namespace

TEST(EnvironmentHistory, TellsWhatCameAndWent) {
    EnvironmentHistory history;
    EXPECT_EQ(
        titlesOf(history.receive(volumes({"/m/a", "/m/d"}), display({}), "critical", Date{0})), "")
        << "the starting point";
    const auto records =
        history.receive(volumes({"/m/c", "/m/a", "/m/b"}), {}, "critical", Date{10});
    EXPECT_EQ(titlesOf(records), "b Mounted, c Mounted, d Unmounted, Screen Disconnected, ")
        << "in the order of their paths";
    ASSERT_EQ(records.size(), 4U);
    auto expected = SystemActivity::observed(SystemActivity::Kind::volumeChanged, Date{10});
    expected.id = records[0].id;
    expected.environmentActivity = volumeEntry("/m/b", std::nullopt);
    expected.environmentActivity->connected = true;
    EXPECT_EQ(records[0], expected);

    EXPECT_EQ(titlesOf(history.receive(volumes({"/m/a"}), display({}), "critical", Date{20})),
              "b Unmounted, c Unmounted, Screen Connected, ");
    history.reset();
    EXPECT_EQ(titlesOf(history.receive({}, {}, "nominal", Date{30})), "");
}

TEST(EnvironmentHistory, TellsOfDisplaysWithAnotherConfiguration) {
    struct Case {
        const char* what;
        std::optional<DisplayContext> after;
        bool changed;
    };
    const auto with = [](auto change) {
        DisplayContext other = mode;
        change(other);
        return other;
    };
    const Case cases[] = {
        {"the same", mode, false},
        {"unreadable", std::nullopt, false},
        {"pixels", with([](auto& other) { other.pixelHeight = 1080; }), true},
        {"points", with([](auto& other) { other.logicalWidth = 1920; }), true},
        {"scale", with([](auto& other) { other.scale = 1; }), true},
        {"rate", with([](auto& other) { other.refreshRate.reset(); }), true},
        {"place", with([](auto& other) { other.builtIn = true; }), true},
    };
    for (const auto& [what, after, changed] : cases) {
        EnvironmentHistory history;
        history.receive({}, display(mode), "nominal", Date{0});
        const auto records = history.receive({}, display(after, "Renamed"), "nominal", Date{10});
        ASSERT_EQ(titlesOf(records), changed ? "Renamed Configuration Changed, " : "") << what;
        if (!changed)
            continue;
        auto expected = displayEntry("Renamed", after);
        expected.previousDisplay = mode;
        EXPECT_EQ(records[0].environmentActivity, expected) << what;
    }
}

TEST(EnvironmentHistory, TellsOfElevatedThermalPressure) {
    struct Step {
        const char* state;
        const char* title;
        std::optional<Date> elevatedSince;
    };
    using Steps = std::vector<Step>;
    constexpr auto eased = "Thermal Pressure Eased";
    constexpr auto high = "High Thermal Pressure";
    constexpr auto critical = "Critical Thermal Pressure";
    const Steps days[] = {
        {{"nominal", "", {}}, {"fair", "", {}}, {"nominal", "", {}}},
        // The time of the rise comes with the records after it, and goes with the fall.
        {{"nominal", "", {}},
         {"serious", high, {}},
         {"critical", critical, Date{1}},
         {"critical", "", {}},
         {"serious", high, Date{1}},
         {"fair", eased, Date{1}},
         {"critical", critical, {}},
         {"nominal", eased, Date{6}}},
        // Nobody saw this one rise.
        {{"serious", "", {}}, {"critical", critical, {}}, {"fair", eased, {}}},
    };
    for (const Steps& steps : days) {
        EnvironmentHistory history;
        for (std::size_t i = 0; i < steps.size(); ++i) {
            SCOPED_TRACE(steps[i].state);
            const auto records =
                history.receive({}, {}, steps[i].state, Date{static_cast<double>(i)});
            ASSERT_EQ(records.size(), *steps[i].title ? 1U : 0U);
            if (records.empty())
                continue;
            EXPECT_EQ(records[0].title(), steps[i].title);
            EnvironmentActivity expected;
            expected.deviceName = "Mac";
            expected.state = steps[i].state;
            expected.previousState = steps[i - 1].state;
            expected.elevatedSince = steps[i].elevatedSince;
            EXPECT_EQ(records[0].environmentActivity, expected);
        }
    }
    // A rise that was seen is forgotten with the rest.
    EnvironmentHistory history;
    history.receive({}, {}, "fair", Date{0});
    history.receive({}, {}, "serious", Date{1});
    history.reset();
    history.receive({}, {}, "serious", Date{2});
    const auto records = history.receive({}, {}, "fair", Date{3});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].environmentActivity->elevatedSince, std::nullopt);
}

TEST(EnvironmentHistory, NamesWhatItSees) {
    std::string states;
    for (int number = -1; number <= 4; ++number)
        states += std::string(ThermalState::name(number).value_or("-")) + ",";
    EXPECT_EQ(states, "-,nominal,fair,serious,critical,-,");

    const VolumeContext labelled{"Backup", 5, {}, {}, {}, {}};
    EXPECT_EQ(volumeEntry("/m/x", labelled).deviceName, "Backup");
    EXPECT_EQ(volumeEntry("/m/x", labelled).volume, labelled);
    EXPECT_EQ(volumeEntry("/m/x", VolumeContext{}).deviceName, "x");
    for (const double rate : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        DisplayContext still = mode;
        still.refreshRate = rate;
        EXPECT_EQ(displayEntry("", still).display->refreshRate, std::nullopt) << rate;
    }
    EXPECT_EQ(displayEntry("", mode).display, mode);
}
