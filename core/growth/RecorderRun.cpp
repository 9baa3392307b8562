#include "core/growth/RecorderRun.h"

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

} // namespace tidemark
