#include "app/monitors/EnvironmentActivityMonitor.h"

#include "app/preferences/PreferenceKeys.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"

#include <latch>

#include <gtest/gtest.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

/// What the test lets the sources of the monitor report.
struct Machine {
    // Read on another thread, but never while the test changes them.
    std::optional<std::vector<fs::path>> volumes = std::vector<fs::path>{};
    std::optional<std::vector<ObservedDisplay>> displays = std::vector<ObservedDisplay>{};
    std::optional<std::string_view> thermal = "nominal";
    /// Empty while the monitor follows nothing.
    std::function<void()> volumesChanged;
    std::function<void()> displaysChanged;
    std::function<void()> thermalChanged;
};

struct Volumes final : VolumeSource {
    explicit Volumes(Machine& machine) : machine(machine) {}
    ~Volumes() override { machine.volumesChanged = nullptr; }
    Machine& machine;
};

struct Displays final : DisplaySource {
    explicit Displays(Machine& machine) : machine(machine) {}
    ~Displays() override { machine.displaysChanged = nullptr; }
    std::optional<std::vector<ObservedDisplay>> displays() const override {
        return machine.displays;
    }
    Machine& machine;
};

struct Thermal final : ThermalSource {
    explicit Thermal(Machine& machine) : machine(machine) {}
    ~Thermal() override { machine.thermalChanged = nullptr; }
    std::optional<std::string_view> state() const override { return machine.thermal; }
    Machine& machine;
};

ObservedDisplay display(const std::string& key, std::int64_t width = 1920) {
    return {key, "Screen " + key, DisplayContext{width, 1080, width, 1080, 1, std::nullopt, false}};
}

struct EnvironmentActivityMonitorTest : testing::Test {
    test::MemoryPreferences preferences;
    NotificationCenter workspace;
    test::ManualAppClock clock;
    Machine machine;
    std::vector<SystemActivity> records;
    std::optional<EnvironmentActivityMonitor> monitor;
    /// The readings of the list of volumes that have ended.
    std::atomic<int> readings = 0;

    EnvironmentActivityMonitorTest() {
        monitor.emplace(EnvironmentActivityMonitor::Setup{
            .preferences = preferences,
            .workspaceCenter = workspace,
            .volumes =
                [this](auto didChange) {
                    machine.volumesChanged = std::move(didChange);
                    return std::make_unique<Volumes>(machine);
                },
            .displays =
                [this](auto didChange) {
                    machine.displaysChanged = std::move(didChange);
                    return std::make_unique<Displays>(machine);
                },
            .thermal =
                [this](auto didChange) {
                    machine.thermalChanged = std::move(didChange);
                    return std::make_unique<Thermal>(machine);
                },
            .volumeReading = {.list =
                                  [this] {
                                      ++readings;
                                      return machine.volumes;
                                  },
                              .details =
                                  [](const fs::path& path) {
                                      return std::optional(VolumeContext{
                                          "Disk " + path.filename().native(), {}, {}, {}, {}, {}});
                                  }},
            .clock = clock,
        });
    }
    void start() {
        monitor->start([this](SystemActivity activity) { records.push_back(std::move(activity)); });
        finishReading();
    }
    /// Waits until a reading that has begun has ended.
    void finishReading() {
        const int before = readings;
        test::until([&] { return clock.sleeping() == 0 && readings >= before; });
        test::settle();
    }
    /// Lets the pending change settle and returns the titles of all new records.
    std::string titles() {
        clock.advance(2);
        finishReading();
        std::string text;
        for (const auto& record : std::exchange(records, {}))
            text += record.title() + ", ";
        return text;
    }
    void mount(std::vector<fs::path> volumes) {
        machine.volumes = std::move(volumes);
        machine.volumesChanged();
    }
    void connect(std::vector<ObservedDisplay> displays) {
        machine.displays = std::move(displays);
        machine.displaysChanged();
    }
    void heat(std::optional<std::string_view> state) {
        machine.thermal = state;
        machine.thermalChanged();
    }
    void turn(bool on) {
        preferences.set(preference::environmentHistoryEnabled.name, on);
        test::settle();
    }
};

} // namespace

TEST_F(EnvironmentActivityMonitorTest, ComparesTwoSecondsAfterTheLastChange) {
    machine.volumes = {"/media/a"};
    start();
    EXPECT_EQ(titles(), "");
    mount({"/media/a", "/media/c"});
    clock.advance(1);
    mount({"/media/a", "/media/c", "/media/b"});
    connect({display("1")});
    heat("serious");
    clock.advance(1.9);
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(titles(), "Disk b Mounted, Disk c Mounted, Screen 1 Connected, "
                        "High Thermal Pressure, ");
    // Back within the wait, and a display with another mode.
    mount({});
    mount({"/media/a", "/media/c", "/media/b"});
    connect({display("1", 2560)});
    EXPECT_EQ(titles(), "Screen 1 Configuration Changed, ");
    mount({"/media/a"});
    connect({{"1", "Screen 1", {}}});
    heat("fair");
    EXPECT_EQ(titles(), "Disk b Unmounted, Disk c Unmounted, Thermal Pressure Eased, ");
    // The list can't be read, then it can.
    mount({});
    machine.volumes.reset();
    EXPECT_EQ(titles(), "");
    mount({"/media/z"});
    EXPECT_EQ(titles(), "");
}

TEST_F(EnvironmentActivityMonitorTest, StartsAnewAfterGaps) {
    const std::pair<const char*, std::function<void()>> gaps[] = {
        {"sleep",
         [&] {
             workspace.post(notification::willSleep);
             EXPECT_FALSE(machine.volumesChanged || machine.displaysChanged
                          || machine.thermalChanged);
             workspace.post(notification::didWake);
         }},
        {"a sleep of unknown end",
         [&] {
             workspace.post(notification::willSleep);
             workspace.post(notification::sleepAbandoned);
         }},
        {"setting",
         [&] {
             turn(false);
             EXPECT_FALSE(machine.volumesChanged || machine.displaysChanged
                          || machine.thermalChanged);
             turn(true);
         }},
        {"restart",
         [&] {
             monitor->stop();
             EXPECT_FALSE(machine.volumesChanged || machine.displaysChanged
                          || machine.thermalChanged);
             start();
         }},
        {"displays not known",
         [&] {
             machine.displays.reset();
             machine.displaysChanged();
             EXPECT_EQ(titles(), "");
             connect({});
         }},
        {"no thermal state",
         [&] {
             heat(std::nullopt);
             EXPECT_EQ(titles(), "");
             heat("critical");
         }},
    };
    start();
    for (const auto& [what, gap] : gaps) {
        machine.displays = {display("1"), display("2")};
        machine.thermal = "nominal";
        mount({"/media/a"});
        titles();
        // A change that is pending when the gap begins.
        mount({"/media/a", "/media/b"});
        clock.advance(1);
        machine.displays = {display("3")};
        machine.thermal = "serious";
        gap();
        EXPECT_EQ(titles(), "") << what;
        mount({"/media/b"});
        EXPECT_EQ(titles(), "Disk a Unmounted, ") << what;
    }
}

TEST_F(EnvironmentActivityMonitorTest, FollowsNothingWhileTurnedOff) {
    turn(false);
    start();
    EXPECT_FALSE(machine.volumesChanged || machine.displaysChanged || machine.thermalChanged);
    EXPECT_EQ(titles(), "");
    EXPECT_EQ(readings, 0);
}

TEST(VolumeObservationReader, ListsAVolumeThatDoesNotRespondWithoutDetails) {
    test::ManualAppClock clock;
    std::latch server{1};
    std::atomic<int> asked = 0;
    {
        VolumeObservationReader reader{
            {.list = [] { return std::optional(std::vector<fs::path>{"/mnt/dead", "/mnt/usb"}); },
             .details =
                 [&](const fs::path& path) {
                     if (path == "/mnt/dead") {
                         ++asked;
                         // Wakes the event loop of the test.
                         QMetaObject::invokeMethod(
                             QCoreApplication::instance(), [] {}, Qt::QueuedConnection);
                         server.wait();
                     }
                     return std::optional(VolumeContext{"Named", {}, {}, {}, {}, {}});
                 }},
            clock};
        const auto names = [&] {
            auto reading = reader.read({});
            test::until([&] { return asked > 0; });
            clock.advance(VolumeObservationReader::mostTime);
            const auto volumes = test::await(std::move(reading)).value();
            std::string text;
            for (const auto& [path, volume] : volumes)
                text += volume.deviceName + " ";
            return text;
        };
        EXPECT_EQ(names(), "dead Named ");
        // Not asked again while it hangs.
        EXPECT_EQ(test::await(reader.read({})).value().at("/mnt/dead").deviceName, "dead");
        EXPECT_EQ(asked, 1);
        server.count_down();
        QTimer look;
        look.start(5);
        test::until([&] {
            return test::await(reader.read({})).value().at("/mnt/dead").deviceName == "Named";
        });
        std::stop_source cancelled;
        cancelled.request_stop();
        EXPECT_EQ(test::await(reader.read(cancelled.get_token())), std::nullopt);
    }
}
