#include "app/monitors/EnvironmentActivityMonitor.h"

#include "tests/app/support/MonitorFixture.h"

#include <latch>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

/// The values that the sources return to the monitor, and the callbacks of the monitor that a
/// source calls after a change. The callbacks are empty while the monitor does not follow.
struct Machine {
    // The volumes are read on another thread, but never while the test changes them.
    std::optional<std::vector<fs::path>> volumes = std::vector<fs::path>{};
    std::optional<std::vector<ObservedDisplay>> displays = std::vector<ObservedDisplay>{};
    std::optional<std::string_view> thermal = "nominal";
    std::function<void()> volumesChanged;
    std::function<void()> displaysChanged;
    std::function<void()> thermalChanged;
};

struct Volumes final : test::MadeUpSource<VolumeSource, Machine> {
    using MadeUpSource::MadeUpSource;
};

struct Displays final : test::MadeUpSource<DisplaySource, Machine> {
    using MadeUpSource::MadeUpSource;
    std::optional<std::vector<ObservedDisplay>> displays() const override {
        return values.displays;
    }
};

struct Thermal final : test::MadeUpSource<ThermalSource, Machine> {
    using MadeUpSource::MadeUpSource;
    std::optional<std::string_view> state() const override { return values.thermal; }
};

ObservedDisplay display(const std::string& key, std::int64_t width = 1920) {
    return {key, "Screen " + key, DisplayContext{width, 1080, width, 1080, 1, std::nullopt, false}};
}

struct EnvironmentActivityMonitorTest : test::MonitorFixture {
    Machine machine;
    EnvironmentActivityMonitor monitor{
        surroundings,
        {.volumes = Volumes::creator<Volumes>(machine, machine.volumesChanged),
         .displays = Displays::creator<Displays>(machine, machine.displaysChanged),
         .thermal = Thermal::creator<Thermal>(machine, machine.thermalChanged),
         .volumeReading = {.list = [this] { return machine.volumes; },
                           .details =
                               [](const fs::path& path) {
                                   return std::optional(VolumeContext{
                                       "Disk " + path.filename().native(), {}, {}, {}, {}, {}});
                               }}}};

    void start() {
        MonitorFixture::start(monitor);
        finishReading();
    }
    /// Waits until a running reading of the volumes has ended: during it, a coroutine sleeps on the
    /// clock.
    void finishReading() {
        test::until([&] { return clock.sleeping() == 0; });
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
    void turn(bool on) { set(preferenceKeys::environmentHistoryEnabled, on); }
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
    clock.advance(1.5);
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(titles(), "Disk b Mounted, Disk c Mounted, Screen 1 Connected, "
                        "High Thermal Pressure, ");
    // The volumes are back before two seconds have passed, and a display has another mode.
    mount({});
    mount({"/media/a", "/media/c", "/media/b"});
    connect({display("1", 2560)});
    EXPECT_EQ(titles(), "Screen 1 Configuration Changed, ");
    mount({"/media/a"});
    connect({{"1", "Screen 1", {}}});
    heat("fair");
    EXPECT_EQ(titles(), "Disk b Unmounted, Disk c Unmounted, Thermal Pressure Eased, ");
    // Displays and thermal state are not known for a while, but the volumes are.
    machine.displays.reset();
    machine.displaysChanged();
    heat(std::nullopt);
    mount({"/media/a", "/media/b"});
    EXPECT_EQ(titles(), "Disk b Mounted, ");
    EXPECT_EQ(*monitor.status,
              "Observing drives · displays and thermal pressure are not reported here");
    connect({});
    heat("critical");
    EXPECT_EQ(titles(), "");
    EXPECT_EQ(*monitor.status, "Observing drives, displays, and thermal pressure");
    // The list of volumes can't be read at first, then it can.
    mount({});
    machine.volumes.reset();
    EXPECT_EQ(titles(), "");
    EXPECT_EQ(*monitor.status, "The drives can’t be listed · history paused");
    mount({"/media/z"});
    EXPECT_EQ(titles(), "");
}

TEST_F(EnvironmentActivityMonitorTest, StartsAnewAfterGaps) {
    const std::pair<const char*, std::function<void()>> gaps[] = {
        {"setting",
         [&] {
             turn(false);
             EXPECT_FALSE(machine.volumesChanged || machine.displaysChanged
                          || machine.thermalChanged);
             turn(true);
         }},
        {"restart",
         [&] {
             monitor.stop();
             start();
         }},
    };
    start();
    for (const auto& [what, gap] : gaps) {
        machine.displays = {display("1"), display("2")};
        machine.thermal = "nominal";
        mount({"/media/a"});
        titles();
        // This change is pending when the gap begins.
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
        // The volume is not asked again while it hangs.
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
