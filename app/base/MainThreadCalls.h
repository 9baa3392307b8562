#pragma once

#include <functional>
#include <memory>

namespace tidemark {

/// Lets other threads call functions on the main thread as long as this object exists there. Create
/// and destroy it on the main thread.
class MainThreadCalls {
public:
    using Post = std::function<void(std::function<void()>)>;

    MainThreadCalls();
    ~MainThreadCalls();
    MainThreadCalls(const MainThreadCalls&) = delete;
    MainThreadCalls& operator=(const MainThreadCalls&) = delete;

    /// Returns a function that may be called on any thread, even after this object is destroyed. It
    /// queues a call for the event loop of the main thread, which drops it if this object has been
    /// destroyed by then.
    Post post() const;

private:
    class Mailbox;

    const std::shared_ptr<Mailbox> mailbox;
};

} // namespace tidemark
