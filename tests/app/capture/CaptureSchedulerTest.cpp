#include "app/capture/CaptureScheduler.h"

#include "core/base/Error.h"
#include "core/capture/CaptureSchedule.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"

#include <gtest/gtest.h>

using namespace tidemark;

TEST(CaptureSchedule, IsDueOnceThePeriodHasPassed) {
    constexpr Date last{1000};
    for (const auto& [schedule, name] : json::rawValues<CaptureSchedule>) {
        const auto period = seconds(schedule);
        EXPECT_EQ(period.has_value(), schedule != CaptureSchedule::manual) << name;
        EXPECT_EQ(isDue(schedule, {}, last), period.has_value()) << name;
        EXPECT_EQ(nextCapture(schedule, {}), std::nullopt) << name;
        EXPECT_EQ(isDue(schedule, last, last + 1e9), period.has_value()) << name;
        if (!period)
            continue;
        EXPECT_TRUE(isDue(schedule, last, last + *period)) << name;
        EXPECT_FALSE(isDue(schedule, last, last + (*period - 0.001))) << name;
        EXPECT_EQ(nextCapture(schedule, last), last + *period) << name;
    }
    EXPECT_EQ(seconds(CaptureSchedule::everyTwelveHours), 12 * 3600);
    EXPECT_EQ(label(CaptureSchedule::daily), "Every day (24 hours)");
}

namespace {

struct SchedulerTest : testing::Test {
    QCoro::Task<void> check() {
        ++checks;
        co_await clock.sleep(checkDuration, {}, AppClock::Slack::none);
    }
    void start() {
        scheduler.start([this] { return check(); });
    }

    /// Posts a notification and waits until its checks have begun.
    static void post(NotificationCenter& center, Notification notification) {
        center.post(notification);
        test::settle();
    }

    test::ManualAppClock clock;
    NotificationCenter application;
    NotificationCenter workspace;
    double checkDuration = 0;
    int checks = 0;
    CaptureScheduler scheduler{application, workspace,
                               CaptureScheduler::backgroundHeartbeat(clock)};
};

} // namespace

TEST_F(SchedulerTest, ChecksEveryMinuteAndAtActivationWakeAndSessionChange) {
    start();
    EXPECT_EQ(checks, 0);
    clock.advance(59);
    EXPECT_EQ(checks, 0);
    clock.advance(1);
    EXPECT_EQ(checks, 1);
    clock.advance(600);
    EXPECT_EQ(checks, 11);

    post(application, notification::applicationDidBecomeActive);
    post(workspace, notification::didWake);
    post(workspace, notification::sessionDidBecomeActive);
    EXPECT_EQ(checks, 14);
    post(application, notification::didWake);
    post(workspace, notification::willSleep);
    EXPECT_EQ(checks, 14);
}

TEST_F(SchedulerTest, DropsRequestsDuringACheck) {
    checkDuration = 90;
    start();
    clock.advance(60);
    EXPECT_EQ(checks, 1);
    post(workspace, notification::didWake);
    clock.advance(60);
    post(workspace, notification::didWake);
    EXPECT_EQ(checks, 1);
    clock.advance(31);
    EXPECT_EQ(checks, 1) << "the dropped request is not repeated";
    post(workspace, notification::didWake);
    EXPECT_EQ(checks, 2);
    clock.advance(90);
}

TEST_F(SchedulerTest, ContinuesAfterACheckThatFailed) {
    scheduler.start([this]() -> QCoro::Task<void> {
        ++checks;
        throw Error("The check failed.");
        co_return;
    });
    clock.advance(180);
    EXPECT_EQ(checks, 3);
}

TEST_F(SchedulerTest, MayBeStoppedByItsOwnCheck) {
    scheduler.start([this] {
        scheduler.stop();
        return check();
    });
    clock.advance(60);
    clock.advance(600);
    EXPECT_EQ(checks, 1);
}
