#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string_view>

namespace tidemark {

/// An event of the application or of the machine, identified by its name.
struct Notification {
    std::string_view name;

    bool operator==(const Notification&) const = default;
};

namespace notification {

// Of the application.
inline constexpr Notification applicationDidBecomeActive{"applicationDidBecomeActive"};

// Of the machine and of the user's session on it.
inline constexpr Notification willSleep{"willSleep"};
inline constexpr Notification didWake{"didWake"};
/// Posted instead of `didWake` when the source of `willSleep` has stopped, so that it is not known
/// whether and when the machine wakes.
inline constexpr Notification sleepAbandoned{"sleepAbandoned"};
inline constexpr Notification screensDidSleep{"screensDidSleep"};
inline constexpr Notification screensDidWake{"screensDidWake"};
inline constexpr Notification sessionDidBecomeActive{"sessionDidBecomeActive"};
inline constexpr Notification sessionDidResignActive{"sessionDidResignActive"};
inline constexpr Notification willPowerOff{"willPowerOff"};

} // namespace notification

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
    /// during the call is not called any more; one that is added is called from the next call on.
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
