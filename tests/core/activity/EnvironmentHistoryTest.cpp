#include "core/activity/EnvironmentHistory.h"

#include "core/activity/ThermalState.h"

#include <limits>
#include <sstream>

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

Entries displays(std::optional<DisplayContext> shown, const char* name = "Screen") {
    return {{"7", displayEntry(name, shown)}};
}

std::string titlesOf(const std::vector<SystemActivity>& records) {
    std::string titles;
    for (const auto& record : records)
        titles += record.title() + ", ";
    return titles;
}

} // namespace

TEST(EnvironmentHistory, ReportsAddedAndRemovedDevices) {
    EnvironmentHistory history;
    EXPECT_EQ(
        titlesOf(history.receive({volumes({"/m/a", "/m/d"}), displays({}), "critical"}, Date{0})),
        "")
        << "the starting point";
    const auto records =
        history.receive({volumes({"/m/c", "/m/a", "/m/b"}), Entries(), "critical"}, Date{10});
    EXPECT_EQ(titlesOf(records), "b Mounted, c Mounted, d Unmounted, Screen Disconnected, ")
        << "in the order of their paths";
    ASSERT_EQ(records.size(), 4U);
    auto expected = SystemActivity::observed(SystemActivity::Kind::volumeChanged, Date{10});
    expected.id = records[0].id;
    auto mounted = volumeEntry("/m/b", std::nullopt);
    mounted.connected = true;
    expected.environmentActivity.emplace(std::move(mounted));
    EXPECT_EQ(records[0], expected);

    EXPECT_EQ(titlesOf(history.receive({volumes({"/m/a"}), displays({}), "critical"}, Date{20})),
              "b Unmounted, c Unmounted, Screen Connected, ");
    history.reset();
    EXPECT_EQ(titlesOf(history.receive({{}, Entries(), "nominal"}, Date{30})), "");
}

TEST(EnvironmentHistory, ReportsVolumesWhileDisplaysAreNotKnown) {
    EnvironmentHistory history;
    history.receive({volumes({"/m/a"}), {}, {}}, Date{0});
    EXPECT_EQ(titlesOf(history.receive({volumes({}), displays({}), "serious"}, Date{1})),
              "a Unmounted, ");
    EXPECT_EQ(titlesOf(history.receive({volumes({"/m/a"}), {}, {}}, Date{2})), "a Mounted, ");
}

TEST(EnvironmentHistory, ReportsReconfiguredDisplays) {
    const std::tuple<const char*, std::optional<DisplayContext>, bool> cases[] = {
        {"the same", mode, false},
        {"unreadable", std::nullopt, false},
        {"pixels", {{2560, 1080, 1280, 720, 2, 60.0, false}}, true},
        {"points", {{2560, 1440, 1920, 720, 2, 60.0, false}}, true},
        {"scale", {{2560, 1440, 1280, 720, 1, 60.0, false}}, true},
        {"rate", {{2560, 1440, 1280, 720, 2, {}, false}}, true},
        {"place", {{2560, 1440, 1280, 720, 2, 60.0, true}}, true},
    };
    for (const auto& [what, after, changed] : cases) {
        EnvironmentHistory history;
        history.receive({{}, displays(mode), {}}, Date{0});
        const auto records = history.receive({{}, displays(after, "Renamed"), {}}, Date{10});
        ASSERT_EQ(titlesOf(records), changed ? "Renamed Configuration Changed, " : "") << what;
        auto expected = displayEntry("Renamed", after);
        expected.previousDisplay = mode;
        for (const auto& record : records)
            EXPECT_EQ(record.environmentActivity, expected) << what;
    }
}

TEST(EnvironmentHistory, ReportsElevatedThermalPressure) {
    struct Case {
        const char* what;
        /// One word a second: a state, "unknown", or "reset", which resets the history.
        const char* states;
        /// The recorded changes of state, each with "@" and the second at which the pressure became
        /// elevated, if the record has it.
        const char* story;
    };
    const Case cases[] = {
        {"mild", "nominal fair nominal", ""},
        {"with the time of the rise until the fall",
         "nominal serious critical critical serious fair critical nominal",
         "nominal-serious serious-critical@1 critical-serious@1 serious-fair@1 fair-critical "
         "critical-nominal@6 "},
        {"the rise was not observed", "serious critical fair", "serious-critical critical-fair "},
        {"a reset forgets the rise", "fair serious reset serious fair",
         "fair-serious serious-fair "},
        {"not known for a while", "fair serious unknown critical unknown fair serious fair",
         "fair-serious fair-serious serious-fair@6 "},
    };
    for (const auto& [what, states, story] : cases) {
        EnvironmentHistory history;
        std::istringstream words(states);
        std::string recorded;
        Date time;
        for (std::string state; words >> state; time = time + 1) {
            if (state == "reset") {
                history.reset();
                continue;
            }
            EnvironmentHistory::State now;
            if (state != "unknown")
                now.thermal = state;
            for (const auto& record : history.receive(now, time)) {
                EXPECT_EQ(record.kind, SystemActivity::Kind::thermalChanged);
                const auto activity = *record.environmentActivity.value();
                EXPECT_EQ(activity.deviceName, "Mac");
                recorded += activity.previousState.value() + "-" + activity.state.value();
                if (const auto since = activity.elevatedSince)
                    recorded += "@" + std::to_string(static_cast<int>(since->secondsSince2001));
                recorded += " ";
            }
        }
        EXPECT_EQ(recorded, story) << what;
    }
}

TEST(EnvironmentHistory, NamesStatesVolumesAndDisplays) {
    std::string states;
    for (int number = -1; number <= 4; ++number)
        states += std::string(ThermalState::name(number).value_or("-")) + ",";
    EXPECT_EQ(states, "-,nominal,fair,serious,critical,-,");

    const VolumeContext labelled{"Backup", 5, {}, {}, {}, {}};
    EXPECT_EQ(volumeEntry("/m/x", labelled).deviceName, "Backup");
    EXPECT_EQ(volumeEntry("/m/x", labelled).volume, labelled);
    EXPECT_EQ(volumeEntry("/m/x", VolumeContext{}).deviceName, "x");
    using Limits = std::numeric_limits<double>;
    for (const double rate : {0.0, -1.0, Limits::quiet_NaN(), Limits::infinity()}) {
        DisplayContext still = mode;
        still.refreshRate = rate;
        EXPECT_EQ(displayEntry("", still).display->refreshRate, std::nullopt) << rate;
    }
    for (const double scale : {Limits::quiet_NaN(), Limits::infinity()}) {
        DisplayContext odd = mode;
        odd.scale = scale;
        EXPECT_EQ(displayEntry("", odd).display->scale, 1) << scale;
    }
    EXPECT_EQ(displayEntry("", mode).display, mode);
}
