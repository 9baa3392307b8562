#pragma once

#include "core/base/Clock.h"

#include <functional>

namespace tidemark::test {

/// A clock that only advances by pauses, by `advance`, and by `readingStep` at each reading of the
/// monotonic time. Wall time advances with it.
class ManualClock final : public Clock {
public:
    static constexpr Date start{700'000'000};

    explicit ManualClock(double readingStep = 0) : readingStep(readingStep) {}

    Date now() override { return start + elapsed; }
    double monotonicSeconds() override {
        const double reading = elapsed;
        elapsed += readingStep;
        return reading;
    }
    bool pause(double seconds, const std::stop_token& stop) override {
        elapsed += seconds;
        ++pauses;
        if (onPause)
            onPause();
        return !stop.stop_requested();
    }

    void advance(double seconds) { elapsed += seconds; }

    double elapsed = 0;
    double readingStep;
    int pauses = 0;
    /// Called in each pause.
    std::function<void()> onPause;
};

} // namespace tidemark::test
