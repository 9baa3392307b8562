#include "platform/linux/SessionThread.h"

#include <QString>

namespace tidemark {

namespace {

constexpr unsigned long mostWaitMilliseconds = 1000;

} // namespace

SessionThread::SessionThread(const char* name) : thread(new QThread), receiver(new QObject) {
    thread->setObjectName(QString::fromLatin1(name));
    receiver->moveToThread(thread);
    thread->start();
}

SessionThread::~SessionThread() {
    post([thread = thread, receiver = receiver] {
        receiver->deleteLater();
        thread->quit();
    });
    if (thread->wait(mostWaitMilliseconds))
        delete thread;
}

void SessionThread::post(std::function<void()> work) {
    QMetaObject::invokeMethod(receiver, std::move(work), Qt::QueuedConnection);
}

} // namespace tidemark
