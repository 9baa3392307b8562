#pragma once

#include <atomic>
#include <chrono>
#include <stop_token>
#include <thread>

namespace tidemark {

/// Turns the first Control-C (SIGINT), SIGTERM or loss of the terminal (SIGHUP) into a request to
/// stop, and the second into the end of the process at once. What was asked to stop may hang in the
/// system, such as in a network volume that never answers: when it takes longer than `longestEnd`,
/// the process ends as well. Nothing half-written is left then, as files are replaced whole.
///
/// To be made before any other thread, which then inherits that these signals are taken here; one
/// at a time.
class Interruption {
public:
    /// What follows a stop. A process that ends has to be gone in time, long after this object; one
    /// that goes on, as to print what it has, has to be done with its work by the end of this
    /// object.
    enum class AfterStop { goesOn, ends };

    static constexpr std::chrono::milliseconds longestEnd{10'000};

    /// Throws `Error` when the thread that waits for signals can't be started.
    explicit Interruption(AfterStop next, std::chrono::milliseconds longest = longestEnd);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    std::stop_token token() const { return source.get_token(); }

private:
    /// The signals that are taken here reach no other thread.
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
