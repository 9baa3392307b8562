#include "app/monitors/PowerActivityMonitor.h"

#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using Kind = SystemActivity::Kind;
using Records = PowerActivityMonitor::Records;

namespace {

/// A monitor with a real file; the test posts sleep and wake.
struct PowerActivityMonitorTest : testing::Test {
    PowerActivityMonitorTest() { create(); }

    void create() {
        monitor.reset();
        monitor.emplace(file, center, clock,
                        PowerActivityMonitor::Callbacks{
                            .collectionAllowed = [this] { return allowed; },
                            .didRecord =
                                [this](const Records& records) {
                                    log += std::to_string(records.size()) + " ";
                                    // Records are on disk before they are reported.
                                    EXPECT_GE(stored().size(), records.size());
                                },
                            .didFail = [this](const auto&) { log += "failed "; },
                            .battery = [this] { return reading(); },
                        });
    }
    /// Starts the monitor and returns the number of records in the file; −1 when it did not start.
    int start() {
        const auto records = test::await(monitor->start());
        return records ? static_cast<int>(records->size()) : -1;
    }
    void record(int second) {
        monitor->record(SystemActivity::observed(Kind::woke, Date{static_cast<double>(second)}));
    }
    void expectLog(const std::string& expected) {
        test::until([&] { return log.size() >= expected.size(); });
        test::settle();
        EXPECT_EQ(log, expected);
        log.clear();
    }
    QCoro::Task<std::optional<BatteryObservation>> reading() {
        if (batteryDelay > 0)
            co_await clock.sleep(batteryDelay, {}, AppClock::Slack::none);
        co_return battery;
    }
    std::vector<Shared<SystemActivity>> stored() const { return SystemActivityStore::read(file); }
    /// The times of the stored records.
    std::string times() const {
        std::string text;
        for (const auto& activity : stored())
            text += std::to_string(static_cast<int>(activity->timestamp.secondsSince2001)) + " ";
        return text;
    }

    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "data/system-activity.json";
    NotificationCenter center;
    test::ManualAppClock clock;
    bool allowed = true;
    std::optional<BatteryObservation> battery;
    /// Seconds until a reading is there.
    double batteryDelay = 0;
    std::string log;
    std::optional<PowerActivityMonitor> monitor;
};

} // namespace

TEST_F(PowerActivityMonitorTest, RecordsSleepAndWake) {
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(start(), -1);
    EXPECT_FALSE(std::filesystem::exists(file));
    battery = {.externalPower = true, .percentage = 80, .charging = {}, .fullyCharged = {}};
    const Date asleep = clock.now();
    center.post(notification::willSleep);
    clock.suspend(3600);
    battery.reset();
    center.post(notification::didWake);
    center.post(notification::willPowerOff);
    expectLog("1 2 ");

    const auto records = stored();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0]->kind, Kind::sleepRequested);
    EXPECT_EQ(records[0]->powerObservation->percentage, 80);
    EXPECT_EQ(records[1]->kind, Kind::woke);
    EXPECT_EQ(records[1]->observedSession->startedAt, asleep);
    EXPECT_EQ(records[1]->observedSession->endedAt, asleep + 3600);
}

TEST_F(PowerActivityMonitorTest, WaitsForTheBatteryAfterAWakeUntilTheNextSleepOrTheEnd) {
    start();
    battery = {.externalPower = true, .percentage = 60, .charging = {}, .fullyCharged = {}};
    batteryDelay = 3;
    center.post(notification::didWake);
    const Date woke = clock.now();
    clock.advance(3);
    expectLog("1 ");
    // The next sleep comes before the battery is read, and so does the end of the program.
    center.post(notification::didWake);
    center.post(notification::willSleep);
    test::await(monitor->writer());
    center.post(notification::didWake);
    monitor->stop();
    clock.advance(10);
    expectLog("2 3 4 ");

    const auto records = stored();
    EXPECT_EQ(records[0]->timestamp, woke);
    EXPECT_EQ(records[0]->powerObservation, battery);
    EXPECT_EQ(records[1]->kind, Kind::woke);
    EXPECT_EQ(records[2]->kind, Kind::sleepRequested);
    EXPECT_EQ(records[3]->kind, Kind::woke);
    EXPECT_TRUE(records[3]->observedSession);
    EXPECT_FALSE(records[1]->powerObservation || records[2]->powerObservation
                 || records[3]->powerObservation);
}

TEST_F(PowerActivityMonitorTest, WritesRecordsInOrder) {
    start();
    std::string expected;
    for (int i = 1; i <= 30; ++i) {
        record(i);
        expected += std::to_string(i) + " ";
    }
    // Records are reported from the event loop only, which has not run since.
    EXPECT_EQ(log, "");
    // The log has the numbers of stored records, which here equal their times.
    expectLog(expected);
    EXPECT_EQ(times(), expected);
}

TEST_F(PowerActivityMonitorTest, RecordsNothingWhileNotAllowed) {
    start();
    allowed = false;
    record(1);
    center.post(notification::willSleep);
    allowed = true;
    center.post(notification::didWake);
    expectLog("1 ");
    EXPECT_FALSE(stored().front()->observedSession);
}

TEST_F(PowerActivityMonitorTest, DropsOnlyTheRecordThatCannotBeWritten) {
    start();
    folder.write("data", "in the way");
    record(1);
    expectLog("failed ");
    std::filesystem::remove(folder / "data");
    record(2);
    // A time that can't be stored.
    monitor->record(SystemActivity::observed(Kind::woke, Date::distantFuture()));
    record(3);
    expectLog("1 failed 2 ");
    EXPECT_EQ(times(), "2 3 ");
}

TEST_F(PowerActivityMonitorTest, StopWritesAcceptedRecordsAndAcceptsNoMore) {
    start();
    center.post(notification::willSleep);
    record(1);
    monitor->stop();
    EXPECT_FALSE(monitor->isStarted());
    record(2);
    center.post(notification::didWake);
    // The next start also reads the records that are still being written.
    EXPECT_EQ(start(), 2);
    center.post(notification::didWake);
    expectLog("1 2 3 ");
    EXPECT_FALSE(stored().back()->observedSession);

    record(4);
    record(5);
    monitor.reset();
    EXPECT_EQ(stored().size(), 5U);
    EXPECT_EQ(log, "4 5 ");
}

TEST_F(PowerActivityMonitorTest, StopsDuringTheRead) {
    auto first = monitor->start();
    EXPECT_TRUE(monitor->isStarted());
    monitor->stop();
    auto second = monitor->start();
    EXPECT_FALSE(test::await(std::move(first)));
    EXPECT_TRUE(test::await(std::move(second)));
    center.post(notification::didWake);
    expectLog("1 ");

    create();
    const auto abandoned = monitor->start();
    monitor.reset();
    center.post(notification::didWake);
    expectLog("");
}

TEST_F(PowerActivityMonitorTest, RecordsNoSessionForASleepWithUnknownEnd) {
    start();
    center.post(notification::willSleep);
    center.post(notification::sleepAbandoned);
    center.post(notification::didWake);
    expectLog("1 2 ");
    EXPECT_FALSE(stored().back()->observedSession);
}

TEST_F(PowerActivityMonitorTest, WriterWaitsForAcceptedRecords) {
    auto starting = monitor->start();
    record(1);
    record(2);
    test::await(monitor->writer());
    EXPECT_EQ(times(), "1 2 ");
    EXPECT_TRUE(test::await(std::move(starting)));
    record(3);
    test::await(monitor->writer());
    EXPECT_EQ(times(), "1 2 3 ");
}

TEST_F(PowerActivityMonitorTest, KeepsRecordsMadeDuringTheReadAndWritesNothingWhenItFails) {
    const auto startWithASleep = [this] {
        auto starting = monitor->start();
        center.post(notification::willSleep);
        record(1);
        return test::await(std::move(starting));
    };
    EXPECT_EQ(startWithASleep()->size(), 0U);
    expectLog("1 2 ");
    EXPECT_EQ(stored().front()->timestamp, clock.now());

    create();
    auto stopped = monitor->start();
    center.post(notification::willSleep);
    monitor->stop();
    EXPECT_FALSE(test::await(std::move(stopped)));
    EXPECT_EQ(start(), 2);
    expectLog("");

    create();
    folder.write("data/system-activity.json", "[{}]");
    EXPECT_THROW(startWithASleep(), Error);
    EXPECT_FALSE(monitor->isStarted());
    record(2);
    expectLog("");
    EXPECT_EQ(test::contents(file), "[{}]");
    EXPECT_EQ(test::namesIn(folder / "data"), "system-activity.json");
    folder.write("data/system-activity.json", "[]");
    EXPECT_EQ(start(), 0);
    center.post(notification::didWake);
    expectLog("1 ");
    EXPECT_FALSE(stored().front()->observedSession);
}
