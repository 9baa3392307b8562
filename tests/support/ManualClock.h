#pragma once

#include "core/base/Clock.h"

#include <functional>

namespace tidemark::test {

/// A clock that only moves when it is told to: by a pause, by hand, or by `readingStep` at each
/// reading of the monotonic time. Wall time moves along.
class ManualClock final : public Clock {
public:
    static constexpr Date start{700'000'000};

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
    double readingStep = 0;
    int pauses = 0;
    /// Runs within each pause.
    std::function<void()> onPause;
};

} // namespace tidemark::test
