#include "app/monitors/SettlingTimer.h"

#include "core/activity/WiFiLinkHistory.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"

using namespace tidemark;

namespace {

struct SettlingTimerTest : testing::Test {
    SettlingTimerTest() {
        history.receive(true, clock.now());
        timer.emplace(clock, tasks);
    }
    void drop() {
        const Date now = clock.now();
        history.receive(false, now);
        timer->start(now, WiFiLinkHistory::delay, [this](Date at) {
            ++calls;
            settled = history.settle(at);
        });
    }
    /// Advances the clock and handles the events.
    void advance(double seconds) {
        clock.advance(seconds);
        test::settle();
    }

    test::ManualAppClock clock;
    WiFiLinkHistory history;
    std::optional<SystemActivity> settled;
    int calls = 0;
    TaskScope tasks;
    std::optional<SettlingTimer> timer;
};

} // namespace

TEST_F(SettlingTimerTest, SettlesDespiteAnEarlyTimerOrAClockThatIsSet) {
    // Less than a millisecond, and exact in binary.
    constexpr double hair = 1.0 / 2048;
    const std::pair<double, double> cases[] = {
        {0, 0}, {hair, 0}, {0, -3600}, {hair, -hair}, {0, 86'400}};
    for (const auto& [early, clockSetBy] : cases) {
        history.reset();
        history.receive(true, clock.now());
        settled.reset();
        const Date seen = clock.now();
        clock.nextWakesEarly = early;
        drop();
        advance(1);
        clock.suspend(clockSetBy);
        advance(1 - hair);
        EXPECT_FALSE(settled);
        advance(hair);
        ASSERT_TRUE(settled) << early << " " << clockSetBy;
        EXPECT_EQ(settled->timestamp, seen);
    }
}

TEST_F(SettlingTimerTest, CancelsAWaitWhenReplacedStoppedOrDestroyed) {
    drop();
    advance(1);
    drop();
    advance(1.5);
    EXPECT_EQ(calls, 0);
    advance(0.5);
    EXPECT_EQ(calls, 1);

    drop();
    timer->stop();
    advance(2);
    drop();
    timer.reset();
    advance(2);
    EXPECT_EQ(calls, 1);

    timer.emplace(clock, tasks);
    timer->start(clock.now(), 1, [this](Date) { timer.reset(); });
    advance(1);
    EXPECT_FALSE(timer);
    EXPECT_TRUE(tasks.isIdle());
}
