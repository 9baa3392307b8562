#pragma once

#include "app/base/Notification.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string_view>

namespace tidemark {

/// Passes notifications from sources to observers. Main thread only.
class NotificationCenter {
    struct Observers;

public:
    using Callback = std::function<void()>;

    /// Removes its observer when it is destroyed. May outlive the center.
    class Token {
    public:
        Token() = default;
        Token(Token&& other) noexcept;
        Token& operator=(Token&& other) noexcept;
        ~Token() { remove(); }

        void remove();

    private:
        friend class NotificationCenter;
        Token(std::weak_ptr<Observers> observers, std::uint64_t id)
            : observers(std::move(observers)), id(id) {}

        std::weak_ptr<Observers> observers;
        std::uint64_t id = 0;
    };

    [[nodiscard]] Token observe(Notification notification, Callback callback);

    /// Calls the observers in the order in which they were added. An observer that is removed
    /// during the call is not called any more; one that is added is called from the next
    /// notification on.
    ///
    /// A notification that is posted during another one, as when an observer runs the event loop,
    /// is delivered right after it: every observer gets all notifications in the same order.
    void post(Notification notification);

private:
    struct Observer {
        Notification notification;
        std::shared_ptr<const Callback> callback;
    };
    struct Observers {
        void deliver(Notification notification) const;

        std::map<std::uint64_t, Observer> byId;
        std::uint64_t lastId = 0;
        /// Posted and not delivered yet, in order.
        std::deque<Notification> waiting;
        bool isDelivering = false;
    };

    std::shared_ptr<Observers> observers = std::make_shared<Observers>();
};

} // namespace tidemark
