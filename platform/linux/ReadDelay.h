#pragma once

#include <QTimer>
#include <chrono>
#include <functional>

namespace tidemark {

/// Combines the signals of one change, and those of a service that floods the bus, into one reading
/// of the whole state: reads `length` after the first signal, and at most once in that time. Main
/// thread only.
class ReadDelay {
public:
    static constexpr std::chrono::milliseconds length{200};

    explicit ReadDelay(std::function<void()> read) {
        timer.setSingleShot(true);
        timer.callOnTimeout(&timer, std::move(read));
    }

    /// Does nothing while a reading is due.
    void request() {
        if (!timer.isActive())
            timer.start(length);
    }
    void cancel() { timer.stop(); }

private:
    QTimer timer;
};

} // namespace tidemark
