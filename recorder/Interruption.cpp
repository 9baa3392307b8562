#include "recorder/Interruption.h"

#include "core/base/StartThread.h"

#include <atomic>
#include <csignal>

#include <pthread.h>
#include <sys/time.h>
#include <unistd.h>

namespace tidemark {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// Shells report 128 + N as the status of a program that signal N ended.
constexpr int signalStatus = 128;

sigset_t taken() {
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1})
        ::sigaddset(&signals, number);
    return signals;
}

volatile std::sig_atomic_t lateStatus = 0;
std::atomic<void (*)()> lastWork = nullptr;

[[noreturn]] void endAtOnce(int status) {
    if (auto* const work = lastWork.exchange(nullptr))
        work();
    ::_exit(status);
}

void endLate(int) {
    endAtOnce(lateStatus);
}

void setTimer(milliseconds time) {
    const auto whole = std::chrono::duration_cast<seconds>(time);
    itimerval timer{};
    timer.it_value.tv_sec = static_cast<time_t>(whole.count());
    timer.it_value.tv_usec = static_cast<suseconds_t>(microseconds(time - whole).count());
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

/// Ends the process by a signal handler, which also works when no thread can run.
void endAfter(milliseconds time, int status) {
    lateStatus = status;
    struct sigaction action{};
    action.sa_handler = endLate;
    ::sigaction(SIGALRM, &action, nullptr);
    sigset_t alarm;
    ::sigemptyset(&alarm);
    ::sigaddset(&alarm, SIGALRM);
    ::pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
    setTimer(time);
}

} // namespace

Interruption::Masking::Masking() {
    const sigset_t signals = taken();
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

Interruption::Masking::~Masking() {
    const sigset_t signals = taken();
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

Interruption::Interruption(AfterStop afterStop, milliseconds limit)
    : afterStop(afterStop), limit(limit), waiter(startThread([this] { wait(); })) {}

Interruption::~Interruption() {
    over = true;
    // Any process may send SIGUSR1, so it only wakes the waiter, which then checks `over`.
    ::pthread_kill(waiter.native_handle(), SIGUSR1);
    waiter.join();
    if (afterStop == AfterStop::continues)
        setTimer({});
}

void Interruption::callBeforeEndingAtOnce(void (*work)()) {
    lastWork = work;
}

void Interruption::wait() {
    const sigset_t signals = taken();
    int number = 0;
    while (::sigwait(&signals, &number) == 0 && !(number == SIGUSR1 && over)) {
        if (number == SIGUSR1)
            continue;
        if (source.stop_requested())
            endAtOnce(signalStatus + number);
        endAfter(limit, signalStatus + number);
        source.request_stop();
    }
}

} // namespace tidemark
