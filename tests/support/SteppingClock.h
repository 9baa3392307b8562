#pragma once

#include "core/base/Clock.h"

namespace tidemark::test {

/// A clock that goes on by `step` seconds whenever it is looked at.
class SteppingClock final : public Clock {
public:
    explicit SteppingClock(double secondsPerLook = 0) : step(secondsPerLook) {}

    Date now() override { return Date{monotonicSeconds()}; }
    double monotonicSeconds() override { return time += step; }
    bool pause(double seconds, const std::stop_token& stop) override {
        time += seconds;
        return !stop.stop_requested();
    }

private:
    double step;
    double time = 0;
};

} // namespace tidemark::test
