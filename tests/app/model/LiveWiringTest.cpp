#include "app/model/LiveWiring.h"

#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using Kind = SystemActivity::Kind;

namespace {

/// A monitor that logs when it is started and stopped. The test makes records through `record`.
class LoggedMonitor final : public ActivityMonitor {
public:
    LoggedMonitor(std::string& log, std::string called) : all(log), name(std::move(called)) {}

    void start(Record to) override {
        all += name + " ";
        record = std::move(to);
    }
    void stop() override { all += "-" + name + " "; }
    std::map<SettingSource, Absence> settingSources() const override { return {}; }
    std::vector<MonitorStatus> statuses() const override { return {}; }

    Record record;

private:
    std::string& all;
    const std::string name;
};

struct LiveWiringTest : testing::Test {
    LiveWiringTest() {
        live.emplace(LiveWiring::Setup{.state = model,
                                       .activityURL = file,
                                       .workspaceCenter = workspace,
                                       .memory = memory,
                                       .guard = FolderGuard([this] { return ownsFolder; }),
                                       .clock = clock,
                                       .monitors = {&connections, &environment},
                                       .battery = [this] { return reading(); }});
    }
    void start() {
        live->startActivityMonitors();
        test::until([&] { return !log.empty() || model.activityError->has_value(); });
    }
    void untilShown(std::size_t count) {
        test::until([&] { return model.systemActivity().size() == count; });
    }
    QCoro::Task<std::optional<BatteryObservation>> reading() { co_return battery; }
    std::string error() const { return model.activityError->value_or("none"); }
    static SystemActivity activity() { return SystemActivity::observed(Kind::volumeChanged, {1}); }

    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "data/system-activity.json";
    test::ManualAppClock clock;
    test::MemoryPreferences preferences;
    NotificationCenter workspace;
    ModelState model{preferences, clock.now()};
    MemoryHistoryService memory{{.url = folder / "data/memory-history.json",
                                 .preferences = preferences,
                                 .workspaceCenter = workspace,
                                 .clock = clock}};
    std::optional<BatteryObservation> battery;
    bool ownsFolder = true;
    std::string log;
    LoggedMonitor connections{log, "connections"};
    LoggedMonitor environment{log, "environment"};
    std::optional<LiveWiring> live;
};

} // namespace

TEST_F(LiveWiringTest, ShowsStoredAndNewRecords) {
    SystemActivityStore(file).append(activity());
    live->startActivityMonitors();
    start();
    EXPECT_EQ(log, "connections environment ");
    untilShown(1);

    battery = {.externalPower = false, .percentage = 9, .charging = {}, .fullyCharged = {}};
    clock.advance(60);
    workspace.post(notification::willSleep);
    environment.record(activity());
    untilShown(3);
    EXPECT_EQ(*model.observationNow, clock.now());
    EXPECT_EQ(model.systemActivity(), SystemActivityStore::read(file));
    EXPECT_EQ(model.systemActivity()[1]->powerObservation, battery);
    EXPECT_EQ(error(), "none");
}

TEST_F(LiveWiringTest, StopsWhilePausedAndContinuesAfterwards) {
    start();
    model.recordingMode = RecordingMode::paused;
    environment.record(activity());
    live->stop();
    live->startActivityMonitors();
    workspace.post(notification::willSleep);
    test::settle();
    EXPECT_EQ(log, "connections environment -connections -environment ");

    model.recordingMode = RecordingMode::recording;
    log.clear();
    start();
    EXPECT_EQ(log, "connections environment ");
    workspace.post(notification::didWake);
    untilShown(1);
    EXPECT_FALSE(model.systemActivity().front()->observedSession);
}

TEST_F(LiveWiringTest, StartsNothingWithAnUnreadableFile) {
    folder.write("data/system-activity.json", "[{}]");
    start();
    EXPECT_EQ(error(), "Activity history couldn’t be opened. The existing file has not been "
                       "replaced.");
    workspace.post(notification::willSleep);
    test::settle();
    EXPECT_EQ(log, "");
    EXPECT_EQ(test::contents(file), "[{}]");

    std::filesystem::remove(file);
    start();
    untilShown(0);
    test::until([&] { return !log.empty(); });
    EXPECT_EQ(error(), "none") << "the file can be read now";
}

TEST_F(LiveWiringTest, ContinuesAfterAFailedWrite) {
    start();
    folder.write("data", "in the way");
    connections.record(activity());
    test::until([&] { return model.activityError->has_value(); });
    EXPECT_EQ(error(), "Activity history could not be saved. Activity history may be incomplete.");
    std::filesystem::remove(folder / "data");
    connections.record(activity());
    untilShown(1);
    EXPECT_EQ(error(), "none") << "cleared by a successful write";

    ownsFolder = false;
    connections.record(activity());
    test::until([&] { return model.activityError->has_value(); });
    EXPECT_EQ(SystemActivityStore::read(file).size(), 1U);
}

TEST_F(LiveWiringTest, AnnouncesChangesOfTheMemoryHistoryAsChangesOfTheState) {
    test::settle();
    int changes = 0;
    QObject::connect(&model, &ModelState::changed, [&] { ++changes; });
    memory.setClipboardDays(memory.clipboardDays() == 1 ? 7 : 1);
    test::settle();
    EXPECT_EQ(changes, 1);
}

TEST_F(LiveWiringTest, RecordsNothingAfterItsDestruction) {
    start();
    connections.record(activity());
    live.reset();
    connections.record(activity());
    workspace.post(notification::willSleep);
    EXPECT_EQ(SystemActivityStore::read(file).size(), 1U);
}

TEST_F(LiveWiringTest, StartsNoMonitorDuringItsDestruction) {
    live->startActivityMonitors();
    live.reset();
    EXPECT_EQ(log, "-connections -environment ");
}
