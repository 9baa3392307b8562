#pragma once

#include <chrono>

namespace tidemark {

/// Seconds from an arbitrary start; never decreases. For threads other than the
/// main thread, which has an `AppClock` for this.
inline double monotonicSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace tidemark
