#include "platform/linux/MainThreadCalls.h"

#include <QCoreApplication>

namespace tidemark {

MainThreadCalls::Post MainThreadCalls::post() const {
    return [alive = std::weak_ptr(alive)](std::function<void()> call) {
        auto* application = QCoreApplication::instance();
        if (application == nullptr)
            return;
        QMetaObject::invokeMethod(
            application,
            [alive, call = std::move(call)] {
                if (!alive.expired())
                    call();
            },
            Qt::QueuedConnection);
    };
}

} // namespace tidemark
