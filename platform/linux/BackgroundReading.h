#pragma once

#include "app/base/Background.h"
#include "app/base/TaskScope.h"

#include <QtGlobal>
#include <functional>
#include <optional>

namespace tidemark {

/// Runs a blocking reading in the background whenever it is requested, one at a time: requests
/// during a reading cause one more reading after it. Main thread only.
template <class Value>
class BackgroundReading {
public:
    /// `read` is called on another thread and may throw `std::exception`, which is logged. `use` is
    /// called from the event loop; it must not destroy this object.
    BackgroundReading(std::function<Value()> read, std::function<void(Value)> use)
        : read(std::move(read)), use(std::move(use)) {}

    void request() {
        isWanted = true;
        if (!isRunning)
            tasks.start(run());
    }
    /// Drops what is requested, and the result of a running reading.
    void cancel() {
        isWanted = false;
        isCancelled = isRunning;
    }

private:
    QCoro::Task<void> run() {
        const auto hold = tasks.hold();
        isRunning = true;
        const auto work = [read = read](const std::stop_token&) { return read(); };
        while (std::exchange(isWanted, false)) {
            std::optional<Value> value;
            try {
                value = co_await runInBackground(work);
            } catch (const std::exception& error) {
                qWarning("%s", error.what());
            }
            if (tasks.isStopping())
                co_return;
            const bool isDropped = std::exchange(isCancelled, false);
            if (value && !isDropped)
                use(*std::move(value));
        }
        isRunning = false;
    }

    const std::function<Value()> read;
    const std::function<void(Value)> use;
    bool isWanted = false;
    bool isRunning = false;
    bool isCancelled = false;
    TaskScope tasks;
};

} // namespace tidemark
