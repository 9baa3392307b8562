#include "core/activity/SleepHistory.h"

#include <gtest/gtest.h>

using namespace tidemark;
using Kind = SystemActivity::Kind;

TEST(SleepHistory, PairsAWakeWithTheFirstSleepBeforeIt) {
    const BatteryObservation full{
        .externalPower = true, .percentage = 100, .charging = {}, .fullyCharged = {}};
    const BatteryObservation half{
        .externalPower = false, .percentage = 50, .charging = {}, .fullyCharged = {}};
    SleepHistory history;
    EXPECT_FALSE(history.receive(Kind::woke, {1}, half).observedSession);

    const auto sleep = history.receive(Kind::sleepRequested, {10}, full);
    auto expected = SystemActivity::observed(Kind::sleepRequested, {10});
    expected.id = sleep.id;
    expected.powerObservation = full;
    EXPECT_EQ(sleep, expected);
    EXPECT_NE(sleep.id, Uuid());

    history.receive(Kind::sleepRequested, {20}, half);
    history.receive(Kind::volumeChanged, {25}, {});
    const auto wake = history.receive(Kind::woke, {30}, half);
    EXPECT_EQ(wake.powerObservation, half);
    EXPECT_EQ(wake.observedSession, (ObservedSession{{10}, {30}, full, half}));
    EXPECT_NE(wake.id, sleep.id);
    EXPECT_FALSE(history.receive(Kind::woke, {31}, half).observedSession);
}

TEST(SleepHistory, GivesNoNegativeIntervalAndNoneAfterAReset) {
    SleepHistory history;
    history.receive(Kind::sleepRequested, {10}, {});
    EXPECT_FALSE(history.receive(Kind::woke, {9}, {}).observedSession);
    EXPECT_FALSE(history.receive(Kind::woke, {11}, {}).observedSession);

    history.receive(Kind::sleepRequested, {10}, {});
    history.reset();
    EXPECT_FALSE(history.receive(Kind::woke, {11}, {}).observedSession);

    history.receive(Kind::sleepRequested, {12}, {});
    EXPECT_EQ(history.receive(Kind::woke, {12}, {}).observedSession,
              (ObservedSession{{12}, {12}, {}, {}}));
}
