#include "cli/Interruption.h"

#include <csignal>

#include <pthread.h>
#include <unistd.h>

namespace tidemark {

namespace {

/// What a shell reports of a program that a signal ended.
constexpr int signalStatus = 128;

sigset_t taken() {
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1})
        ::sigaddset(&signals, number);
    return signals;
}

} // namespace

Interruption::Interruption() {
    const sigset_t signals = taken();
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    waiter = std::thread([this] { wait(); });
}

Interruption::~Interruption() {
    over = true;
    // Anyone may send a SIGUSR1, so it only wakes the waiter to look.
    ::pthread_kill(waiter.native_handle(), SIGUSR1);
    waiter.join();
    const sigset_t signals = taken();
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

void Interruption::wait() {
    const sigset_t signals = taken();
    int number = 0;
    while (::sigwait(&signals, &number) == 0 && !(number == SIGUSR1 && over))
        if (number != SIGUSR1 && !source.request_stop())
            ::_exit(signalStatus + number);
}

} // namespace tidemark
