#pragma once

#include <QObject>
#include <QThread>
#include <functional>

namespace tidemark {

/// A thread with an event loop of its own, for the connection to a display server: its calls can
/// block without a limit. Main thread only.
class SessionThread {
public:
    explicit SessionThread(const char* name);
    /// Runs what was posted and ends the thread. A thread that still hangs after a second is left
    /// behind, with everything that its work refers to.
    ~SessionThread();
    SessionThread(const SessionThread&) = delete;
    SessionThread& operator=(const SessionThread&) = delete;

    /// Calls `work` on the thread, in the order of the calls.
    void post(std::function<void()> work);

private:
    QThread* thread;
    /// Lives on the thread.
    QObject* receiver;
};

} // namespace tidemark
