#include "app/monitors/VolumeObservationReader.h"

#include "core/base/Error.h"
#include "core/base/Text.h"

#include <utility>

namespace tidemark {

VolumeObservationReader::VolumeObservationReader(VolumeReading reading, AppClock& clock)
    : reading(std::move(reading)), clock(clock), thread(std::make_unique<WorkerPool>(1)) {}

VolumeObservationReader::~VolumeObservationReader() {
    tasks.drain();
}

QCoro::Task<std::optional<EnvironmentHistory::Entries>>
VolumeObservationReader::read(std::stop_token stop) {
    const auto hold = tasks.hold();
    while (isReading && !tasks.isStopping())
        co_await clock.sleep(mostTime, readingEnded.get_token());
    isReading = true;
    auto volumes = co_await readAll(std::move(stop));
    isReading = false;
    std::exchange(readingEnded, {}).request_stop();
    co_return volumes;
}

QCoro::Task<std::optional<EnvironmentHistory::Entries>>
VolumeObservationReader::readAll(std::stop_token stop) {
    const auto paths = std::make_shared<std::optional<std::vector<std::filesystem::path>>>();
    Work list = [list = reading.list, paths] { *paths = list(); };
    const bool isListed = co_await inTime(std::move(list), [] {});
    if (!isListed || !*paths)
        co_return std::nullopt;
    EnvironmentHistory::Entries volumes;
    for (const auto& path : **paths) {
        if (stop.stop_requested() || tasks.isStopping())
            co_return std::nullopt;
        auto context = co_await details(path);
        const std::string shown = textFromBytes(path.native());
        volumes.emplace(shown, volumeEntry(shown, std::move(context)));
    }
    co_return volumes;
}

QCoro::Task<std::optional<VolumeContext>>
VolumeObservationReader::details(std::filesystem::path path) {
    if (!stuck.insert(path).second)
        co_return std::nullopt;
    const auto context = std::make_shared<std::optional<VolumeContext>>();
    Work work = [details = reading.details, path, context] { *context = details(path); };
    Work use = [this, path] { stuck.erase(path); };
    const bool isRead = co_await inTime(std::move(work), std::move(use));
    co_return isRead ? *context : std::nullopt;
}

QCoro::Task<bool> VolumeObservationReader::inTime(Work work, Work use) {
    std::stop_source done;
    try {
        thread->start([work = std::move(work), use, done, post = calls.post()] {
            work();
            post([use, done]() mutable {
                use();
                done.request_stop();
            });
        });
    } catch (const Error&) {
        // No thread can be started at present, and the volume is not stuck.
        use();
        co_return false;
    }
    const std::stop_callback onEnd(tasks.token(), [done]() mutable { done.request_stop(); });
    const bool hasTimedOut = co_await clock.sleep(mostTime, done.get_token());
    if (hasTimedOut)
        thread = std::make_unique<WorkerPool>(1);
    co_return !hasTimedOut && !tasks.isStopping();
}

} // namespace tidemark
