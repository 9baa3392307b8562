#pragma once

#include "core/base/Clock.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tidemark {

/// Tells on standard error how a capture goes on: on a terminal in one line that is rewritten,
/// with the entries so far and the time, otherwise with one line a phase. Hears of time passing as
/// the clock of the capture, which rests between batches of work.
class ProgressLine final : public Clock {
public:
    /// `entries` tells how many have been walked so far.
    explicit ProgressLine(std::function<std::int64_t()> entries);
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
