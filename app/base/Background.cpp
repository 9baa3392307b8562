#include "app/base/Background.h"

#include "core/system/ThreadPriority.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace tidemark::detail {

namespace {

/// More threads than processors: most of them wait for a disk, and some perhaps for a network
/// volume that never answers.
constexpr int mostThreads = 8;

/// Never destroyed: a thread that hangs in the system must not keep the program from ending.
QThreadPool& poolFor(WorkPriority priority) {
    const auto made = [] {
        auto* pool = new QThreadPool;
        pool->setMaxThreadCount(mostThreads);
        return pool;
    };
    static QThreadPool* const utility = made();
    static QThreadPool* const userInitiated = made();
    return priority == WorkPriority::utility ? *utility : *userInitiated;
}

} // namespace

void PoolWait::await_suspend(std::coroutine_handle<> waiting) const {
    (pool ? *pool : poolFor(priority)).start([call = work, urgency = priority, waiting] {
        if (urgency == WorkPriority::utility)
            lowerThreadPriority();
        (*call)();
        // As the last step: what is awaited may be gone the moment after.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [waiting] { waiting.resume(); }, Qt::QueuedConnection);
    });
}

void startOnPool(std::function<void()> work) {
    poolFor(WorkPriority::utility).start(std::move(work));
}

} // namespace tidemark::detail
