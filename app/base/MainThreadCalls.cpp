#include "app/base/MainThreadCalls.h"

#include <QObject>
#include <mutex>
#include <utility>

namespace tidemark {

/// Shared by a `MainThreadCalls` and the functions that it returned, which may be called after it
/// is destroyed.
class MainThreadCalls::Mailbox {
public:
    void post(std::function<void()> call) {
        // Without the lock the receiver could be destroyed while Qt queues the call for it.
        const std::lock_guard lock(mutex);
        if (receiver)
            QMetaObject::invokeMethod(receiver.get(), std::move(call), Qt::QueuedConnection);
    }
    void close() {
        const std::lock_guard lock(mutex);
        receiver.reset();
    }

private:
    std::mutex mutex;
    std::unique_ptr<QObject> receiver = std::make_unique<QObject>();
};

MainThreadCalls::MainThreadCalls() : mailbox(std::make_shared<Mailbox>()) {}

MainThreadCalls::~MainThreadCalls() {
    mailbox->close();
}

MainThreadCalls::Post MainThreadCalls::post() const {
    return [mailbox = mailbox](std::function<void()> call) { mailbox->post(std::move(call)); };
}

} // namespace tidemark
