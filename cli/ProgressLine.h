#pragma once

#include "core/base/Clock.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tidemark {

/// Prints the progress of a capture to standard error: on a terminal in one line that is updated,
/// with the number of entries and the time so far, otherwise with one line per phase. It is the
/// clock of the capture, so that it can update the line whenever the capture pauses between
/// batches.
class ProgressLine final : public Clock {
public:
    /// `entriesSoFar` returns the number of entries walked.
    explicit ProgressLine(std::function<std::int64_t()> entriesSoFar);
    ~ProgressLine() override;
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void begin(const std::string& phase);

    Date now() override { return Clock::system().now(); }
    double monotonicSeconds() override { return Clock::system().monotonicSeconds(); }
    bool pause(double seconds, const std::stop_token& stop) override;

private:
    void draw();

    std::function<std::int64_t()> entriesSoFar;
    bool onTerminal;
    std::string phase;
    double start;
    double lastDrawn = 0;
};

} // namespace tidemark
