#include "platform/linux/MountTableWatch.h"

#include "app/base/Background.h"
#include "core/base/Error.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>

namespace tidemark {

MountTableWatch::MountTableWatch(userVolumes::Tables given, std::function<void()> didChange)
    : tables(std::move(given)), didChange(std::move(didChange)),
      file(::open(tables.mounts.c_str(), O_RDONLY | O_CLOEXEC)),
      delay([this] { tasks.start(read()); }) {
    if (!file) {
        qWarning("Mounts of volumes can't be followed: %s.", std::strerror(errno));
        return;
    }
    notifier = std::make_unique<QSocketNotifier>(file.get(), QSocketNotifier::Exception);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this] { delay.request(); });
    delay.request();
}

QCoro::Task<void> MountTableWatch::read() {
    const auto hold = tasks.hold();
    isOutdated = isReading;
    if (std::exchange(isReading, true))
        co_return;
    const auto work = [tables = tables](const std::stop_token&) {
        return userVolumes::read(tables);
    };
    Volumes volumes;
    try {
        volumes = co_await runInBackground(work);
    } catch (const Error&) {
        // No thread could be started. The volumes count as unknown until the next change.
    }
    isReading = false;
    if (tasks.isStopping())
        co_return;
    if (isOutdated)
        delay.request();
    const bool isFirst = !last;
    if (std::exchange(last, volumes) != volumes && !isFirst)
        didChange();
}

} // namespace tidemark
