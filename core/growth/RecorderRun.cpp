#include "core/growth/RecorderRun.h"

#include <ranges>

namespace tidemark {

void append(std::vector<RecorderRun>& runs, RecorderRun next) {
    if (!runs.empty() && runs.back().kind == RecorderRun::Kind::running
        && next.kind == RecorderRun::Kind::running)
        runs.back() = next;
    else
        runs.push_back(next);
    if (runs.size() > RecorderRun::limit)
        runs.erase(runs.begin(), runs.end() - static_cast<std::ptrdiff_t>(RecorderRun::limit));
}

bool isPaused(const std::vector<RecorderRun>& runs) {
    for (const auto& run : runs | std::views::reverse)
        if (run.kind == RecorderRun::Kind::paused || run.kind == RecorderRun::Kind::resumed)
            return run.kind == RecorderRun::Kind::paused;
    return false;
}

} // namespace tidemark
