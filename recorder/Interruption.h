#pragma once

#include <atomic>
#include <chrono>
#include <stop_token>
#include <thread>

namespace tidemark {

/// Turns the first Control-C (SIGINT), SIGTERM or loss of the terminal (SIGHUP) into a request to
/// stop; the second ends the process at once. The process also ends when stopping takes longer than
/// `limit`, since a system call can hang, as on a network volume that does not respond. Files are
/// replaced whole, so no half-written one is left.
///
/// Construct it before any other thread, so that threads inherit the blocked signals; one instance
/// at a time.
class Interruption {
public:
    /// What the process does after a stop. With `ends`, it has to end within `limit`, even after
    /// this object is destroyed. With `continues`, for example to print partial results, only the
    /// work until the destruction of this object is limited.
    enum class AfterStop { continues, ends };

    static constexpr std::chrono::milliseconds longestEnd{10'000};

    /// Throws `Error` when the thread that waits for signals can't be started.
    explicit Interruption(AfterStop afterStop, std::chrono::milliseconds limit = longestEnd);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    std::stop_token token() const { return source.get_token(); }

    /// Has `work` called before the process is ended at once, where no destructor and no function
    /// of `std::atexit` runs. `work` may be called by a signal handler, so it must neither allocate
    /// nor lock. For the whole process; a second call replaces the first.
    static void callBeforeEndingAtOnce(void (*work)());

private:
    /// Blocks the handled signals in the calling thread and in those that it starts; the waiter
    /// takes them by sigwait(3).
    struct Masking {
        Masking();
        ~Masking();
    };

    void wait();

    const AfterStop afterStop;
    const std::chrono::milliseconds limit;
    std::stop_source source;
    std::atomic<bool> over = false;
    const Masking masking;
    std::thread waiter;
};

} // namespace tidemark
