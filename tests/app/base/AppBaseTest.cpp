#include "app/base/AppClock.h"
#include "app/base/Background.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"
#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/support/NoThreads.h"

#include <latch>
#include <semaphore>
#include <thread>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

QCoro::Task<void> note(AppClock* clock, double seconds, std::stop_token stop, std::string name,
                       std::string* log) {
    const bool whole = co_await clock->sleep(seconds, stop);
    *log += name + (whole ? " " : "- ");
}

} // namespace

TEST(NotificationCenter, CallsObserversInOrderExceptRemovedOnes) {
    NotificationCenter center;
    std::string log;
    NotificationCenter::Token first, second, third, added;
    first = center.observe(notification::didWake, [&] {
        log += "1";
        first.remove();
        second.remove();
        added = center.observe(notification::didWake, [&] { log += "4"; });
    });
    second = center.observe(notification::didWake, [&] { log += "2"; });
    third = center.observe(notification::didWake, [&] { log += "3"; });
    const auto other = center.observe(notification::willSleep, [&] { log += "x"; });

    center.post(notification::didWake);
    EXPECT_EQ(log, "13");
    center.post(notification::didWake);
    EXPECT_EQ(log, "1334");
}

TEST(NotificationCenter, DeliversWhatIsPostedMeanwhileInTheSameOrderToAll) {
    NotificationCenter center;
    std::string log;
    const auto first = center.observe(notification::willSleep, [&] {
        log += "1sleep ";
        center.post(notification::didWake);
    });
    const auto second = center.observe(notification::willSleep, [&] { log += "2sleep "; });
    const auto third = center.observe(notification::didWake, [&] { log += "3wake "; });
    const auto fourth = center.observe(notification::willSleep, [&] { log += "4sleep "; });
    center.post(notification::willSleep);
    EXPECT_EQ(log, "1sleep 2sleep 4sleep 3wake ");
}

TEST(NotificationCenter, MayBeDestroyedBeforeItsTokensAndDuringAPost) {
    NotificationCenter::Token token;
    auto center = std::make_unique<NotificationCenter>();
    token = center->observe(notification::didWake, [&] { center.reset(); });
    center->post(notification::didWake);
    EXPECT_FALSE(center);
}

TEST(AppClock, AStoppedSleepEndsFromTheEventLoop) {
    test::ManualAppClock manual;
    for (AppClock* clock : {&AppClock::system(), static_cast<AppClock*>(&manual)}) {
        std::stop_source source;
        std::string log;
        const auto task = note(clock, 3'000'000, source.get_token(), "a", &log);
        source.request_stop();
        EXPECT_EQ(log, "") << "not within request_stop";
        test::until([&] { return task.isReady(); });
        EXPECT_EQ(log, "a- ");
        const auto late = note(clock, 10, source.get_token(), "b", &log);
        EXPECT_EQ(log, "a- b- ");
    }
}

TEST(AppClock, TheSystemClockEndsASleep) {
    for (const auto slack : {AppClock::Slack::none, AppClock::Slack::allowed})
        EXPECT_TRUE(test::await(AppClock::system().sleep(0.001, {}, slack)));
}

TEST(Background, ResultsAndFailuresArriveOnTheMainThread) {
    const auto main = std::this_thread::get_id();
    const auto check = [main]() -> QCoro::Task<void> {
        auto worker = co_await runInBackground(
            [](const std::stop_token&) { return std::this_thread::get_id(); });
        EXPECT_NE(worker, main);
        EXPECT_EQ(std::this_thread::get_id(), main);
        std::string failure;
        try {
            co_await runInBackground([](const std::stop_token&) { throw Error("It failed."); });
        } catch (const Error& error) {
            failure = error.what();
        }
        EXPECT_EQ(failure, "It failed.");
        EXPECT_EQ(std::this_thread::get_id(), main);
    };
    test::await(check());
}

TEST(Background, ThrowsWhenNoThreadExistsOrCanBeStarted) {
    WorkerPool pool(2);
    const auto answer = [](const std::stop_token&) { return 7; };
    const auto ask = [&] {
        return test::await(runInBackground(answer, {}, WorkPriority::userInitiated, &pool));
    };
    {
        const test::NoThreads refused;
        EXPECT_THROW(ask(), Error);
        std::binary_semaphore released(0);
        detail::startOnPool([&] { released.release(); });
        EXPECT_TRUE(released.try_acquire_for(std::chrono::seconds(10)));
    }
    EXPECT_EQ(ask(), 7);
    const test::NoThreads refused;
    EXPECT_EQ(ask(), 7) << "done by the existing thread";
}

TEST(WorkerPool, RunsWorkInOrderOnOneThread) {
    std::string log;
    std::latch mayBegin(1);
    std::latch done(3);
    {
        WorkerPool pool(1);
        for (const char letter : {'a', 'b', 'c'})
            pool.start([&, letter] {
                mayBegin.wait();
                log += letter;
                done.count_down();
            });
        mayBegin.count_down();
    }
    done.wait();
    EXPECT_EQ(log, "abc");
}

TEST(WorkerPool, GivesWorkToABusyThreadIfNoOtherCanBeStarted) {
    WorkerPool pool(2);
    std::latch begun(1);
    std::latch mayEnd(1);
    std::latch done(2);
    pool.start([&] {
        begun.count_down();
        mayEnd.wait();
        done.count_down();
    });
    begun.wait();
    {
        const test::NoThreads refused;
        pool.start([&] { done.count_down(); });
    }
    mayEnd.count_down();
    done.wait();
}

TEST(WorkerPool, StartsAnotherThreadAfterAnIdleOneEnded) {
    WorkerPool pool(1, std::chrono::milliseconds(0));
    // Some of the threads have ended by the time that the next work is given.
    for (int round = 0; round < 200; ++round) {
        std::binary_semaphore done(0);
        pool.start([&] { done.release(); });
        ASSERT_TRUE(done.try_acquire_for(std::chrono::seconds(10))) << round;
        std::this_thread::yield();
    }
}

TEST(TaskScope, DestructorWaitsForTheCoroutines) {
    test::ManualAppClock clock;
    std::latch stopSeen(1);
    std::string log;
    {
        TaskScope scope;
        scope.start(note(&clock, 100, scope.token(), "sleeper", &log));
        const auto worker = [](TaskScope* owner, std::latch* latch,
                               std::string* text) -> QCoro::Task<void> {
            const auto hold = owner->hold();
            co_await runInBackground(
                [latch](const std::stop_token& stop) {
                    const std::stop_callback whenStopped(stop, [latch] { latch->count_down(); });
                    latch->wait();
                },
                owner->token());
            *text += "worker ";
        };
        const auto task = worker(&scope, &stopSeen, &log);
        EXPECT_FALSE(scope.isIdle());
    }
    EXPECT_NE(log.find("sleeper- "), std::string::npos);
    EXPECT_NE(log.find("worker "), std::string::npos);
}

TEST(TaskScope, SurvivesATaskThatFails) {
    TaskScope scope;
    const auto failing = []() -> QCoro::Task<void> {
        co_await runInBackground([](const std::stop_token&) { throw Error("It failed."); });
    };
    scope.start(failing());
    test::until([&] { return scope.isIdle(); });
}
