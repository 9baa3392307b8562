#pragma once

#include <atomic>
#include <stop_token>
#include <thread>

namespace tidemark {

/// Turns the first Control-C (SIGINT), SIGTERM or loss of the terminal (SIGHUP) into a request to
/// stop, and the second into the end of the process at once. To be made before any other thread,
/// which then inherits that these signals are taken here.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    std::stop_token token() const { return source.get_token(); }

private:
    void wait();

    std::stop_source source;
    std::atomic<bool> over = false;
    std::thread waiter;
};

} // namespace tidemark
