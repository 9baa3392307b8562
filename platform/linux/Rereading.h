#pragma once

#include "platform/linux/ReadDelay.h"

#include <functional>
#include <utility>

namespace tidemark {

/// Reads the state of a service again after its signals: some time after the first of them, and
/// only when the reading before has ended. So a flood of signals causes few questions. Main thread
/// only.
class Rereading {
public:
    /// `read` starts a reading, whose end is reported by `ended`.
    explicit Rereading(std::function<void()> read)
        : read(std::move(read)), delay([this] { begin(); }) {}

    /// Reads at once; while a reading runs, a short time after its end.
    void readNow() {
        delay.cancel();
        begin();
    }
    /// Reads after the delay, which begins at the end of a running reading.
    void request() {
        isWanted = true;
        if (!isRunning)
            delay.request();
    }
    void ended() {
        isRunning = false;
        if (isWanted)
            delay.request();
    }
    /// Forgets a running reading, whose end will not be reported.
    void cancel() {
        delay.cancel();
        isWanted = isRunning = false;
    }

private:
    void begin() {
        isWanted = isRunning;
        if (!std::exchange(isRunning, true))
            read();
    }

    const std::function<void()> read;
    ReadDelay delay;
    bool isWanted = false;
    bool isRunning = false;
};

} // namespace tidemark
