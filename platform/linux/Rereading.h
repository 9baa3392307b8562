#pragma once

#include <QTimer>
#include <chrono>
#include <functional>
#include <utility>

namespace tidemark {

/// Reads the state of a service again after its signals: not for each one, but some time after the
/// first, and only when the reading before has ended. So a flood of signals causes few questions.
/// Main thread only.
class Rereading {
public:
    /// `read` starts a reading, whose end is reported by `ended`.
    explicit Rereading(std::function<void()> read, std::chrono::milliseconds delayTime = pause)
        : read(std::move(read)) {
        delay.setSingleShot(true);
        delay.setInterval(delayTime);
        delay.callOnTimeout([this] { begin(); });
    }

    /// Reads as soon as no other reading runs.
    void readNow() {
        delay.stop();
        begin();
    }
    /// Reads after the pause.
    void request() {
        isWanted = true;
        if (!isRunning && !delay.isActive())
            delay.start();
    }
    void ended() {
        isRunning = false;
        if (isWanted)
            delay.start();
    }
    /// Forgets a running reading, whose end will not be reported.
    void cancel() {
        delay.stop();
        isWanted = isRunning = false;
    }

private:
    static constexpr std::chrono::milliseconds pause{100};

    void begin() {
        isWanted = isRunning;
        if (!std::exchange(isRunning, true))
            read();
    }

    const std::function<void()> read;
    QTimer delay;
    bool isWanted = false;
    bool isRunning = false;
};

} // namespace tidemark
