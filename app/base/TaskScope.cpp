#include "app/base/TaskScope.h"

#include <QCoreApplication>
#include <QLoggingCategory>

namespace tidemark {

namespace {

QCoro::Task<void> watched(QCoro::Task<void> task, TaskScope::Hold) {
    try {
        co_await task;
    } catch (const std::exception& error) {
        qCritical("A task failed unexpectedly: %s", error.what());
    }
}

} // namespace

void TaskScope::start(QCoro::Task<void> task) const {
    watched(std::move(task), hold());
}

void TaskScope::drain() {
    requestStop();
    while (!isIdle())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents
                                        | QEventLoop::WaitForMoreEvents);
}

} // namespace tidemark
