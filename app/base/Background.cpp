#include "app/base/Background.h"

#include "core/base/Error.h"
#include "core/system/ThreadPriority.h"

#include <QCoreApplication>

namespace tidemark::detail {

namespace {

/// Does not depend on the number of processors, because most of the threads wait for a disk or a
/// network volume.
constexpr std::size_t mostThreads = 8;

/// Not destroyed, so that a thread that hangs in the system does not keep the program from ending.
WorkerPool& poolFor(WorkPriority priority) {
    static auto* const utility = new WorkerPool(mostThreads);
    static auto* const userInitiated = new WorkerPool(mostThreads);
    return priority == WorkPriority::utility ? *utility : *userInitiated;
}

} // namespace

bool PoolWait::await_suspend(std::coroutine_handle<> waiting) const {
    const auto onThread = [call = work, urgency = priority, waiting] {
        if (urgency == WorkPriority::utility)
            lowerThreadPriority();
        (*call)();
        // The last step, since the awaiting object may be destroyed right after.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [waiting] { waiting.resume(); }, Qt::QueuedConnection);
    };
    try {
        (pool ? *pool : poolFor(priority)).start(onThread);
        return true;
    } catch (const Error&) {
        *refusal = std::current_exception();
        return false;
    }
}

void startOnPool(const std::function<void()>& work) {
    try {
        poolFor(WorkPriority::utility).start(work);
    } catch (const Error&) {
        work();
    }
}

} // namespace tidemark::detail
