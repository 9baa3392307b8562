#include "cli/ProgressLine.h"

#include "cli/Console.h"
#include "core/base/Text.h"

#include <cstdio>

#include <unistd.h>

namespace tidemark {

namespace {

/// Seconds between two updates of the line.
constexpr double drawingInterval = 0.1;
/// Moves to the start of the line and clears it (ECMA-48).
constexpr const char* clearLine = "\r\033[K";

} // namespace

ProgressLine::ProgressLine(std::function<std::int64_t()> entriesSoFar)
    : entriesSoFar(std::move(entriesSoFar)), onTerminal(console::takesEscapes(STDERR_FILENO)),
      start(monotonicSeconds()) {}

ProgressLine::~ProgressLine() {
    if (onTerminal)
        std::fputs(clearLine, stderr);
}

void ProgressLine::begin(const std::string& next) {
    phase = oneLine(next);
    if (onTerminal)
        draw();
    else
        std::fprintf(stderr, "%s\n", phase.c_str());
}

bool ProgressLine::pause(double seconds, const std::stop_token& stop) {
    if (onTerminal && monotonicSeconds() - lastDrawn >= drawingInterval)
        draw();
    return Clock::system().pause(seconds, stop);
}

void ProgressLine::draw() {
    lastDrawn = monotonicSeconds();
    std::fprintf(stderr, "%s%s %lld entries, %.1f s", clearLine, phase.c_str(),
                 static_cast<long long>(entriesSoFar()), lastDrawn - start);
    std::fflush(stderr);
}

} // namespace tidemark
