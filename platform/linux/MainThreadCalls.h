#pragma once

#include <functional>
#include <memory>

namespace tidemark {

/// Lets other threads call functions on the main thread as long as this object exists there. Create
/// and destroy it on the main thread.
class MainThreadCalls {
public:
    using Post = std::function<void(std::function<void()>)>;

    /// Returns a function that may be called on any thread, even after this object is destroyed. It
    /// queues a call for the event loop of the main thread, which drops it when this object is
    /// destroyed by then.
    Post post() const;

private:
    std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
};

} // namespace tidemark
