#include "core/base/Clock.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tidemark {

namespace {

class SystemClock final : public Clock {
public:
    Date now() override { return Date::now(); }

    double monotonicSeconds() override {
        const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration<double>(sinceStart).count();
    }

    bool pause(double seconds, const std::stop_token& stop) override {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any wake;
        wake.wait_for(lock, stop, std::chrono::duration<double>(seconds), [] { return false; });
        return !stop.stop_requested();
    }
};

} // namespace

Clock& Clock::system() {
    // Never destroyed: another thread may still use it when the process ends.
    static Clock& clock = *new SystemClock;
    return clock;
}

} // namespace tidemark
