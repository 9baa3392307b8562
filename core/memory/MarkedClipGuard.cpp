#include "core/memory/MarkedClipGuard.h"

#include <utility>

namespace tidemark {

void MarkedClipGuard::noteMarked(double now) {
    followsMarked = true;
    end = now + keeperTime;
}

void MarkedClipGuard::noteEnd(double now) {
    if (followsMarked)
        end = now + keeperTime;
}

bool MarkedClipGuard::admits(double now, bool mayBeKeeper) {
    const bool isNext = std::exchange(followsMarked, false);
    return now >= end && !(isNext && mayBeKeeper);
}

} // namespace tidemark
