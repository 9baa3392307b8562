#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string_view>

namespace tidemark {

/// Something that happens to the application or to the machine. Two are the same when their names
/// are.
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
/// Instead of `didWake`: who told of the sleep has gone, and whether and when the machine wakes
/// is not known.
inline constexpr Notification sleepAbandoned{"sleepAbandoned"};
inline constexpr Notification screensDidSleep{"screensDidSleep"};
inline constexpr Notification screensDidWake{"screensDidWake"};
inline constexpr Notification sessionDidBecomeActive{"sessionDidBecomeActive"};
inline constexpr Notification sessionDidResignActive{"sessionDidResignActive"};
inline constexpr Notification willPowerOff{"willPowerOff"};

} // namespace notification

/// Hands notifications from those who learn of them to those who wait for them. Main thread only.
class NotificationCenter {
    struct Observers;

public:
    using Callback = std::function<void()>;

    /// Ends its observation when it goes. May outlive the center.
    class Token {
    public:
        Token() = default;
        Token(Token&& other) noexcept;
        Token& operator=(Token&& other) noexcept;
        ~Token() { remove(); }

        void remove();

    private:
        friend class NotificationCenter;
        Token(std::weak_ptr<Observers> all, std::uint64_t number)
            : observers(std::move(all)), id(number) {}

        std::weak_ptr<Observers> observers;
        std::uint64_t id = 0;
    };

    [[nodiscard]] Token observe(Notification notification, Callback callback);

    /// Calls the observers in the order in which they came. One that is removed meanwhile is not
    /// called any more, one that is added meanwhile not yet.
    void post(Notification notification);

private:
    struct Observer {
        Notification notification;
        std::shared_ptr<const Callback> callback;
    };
    struct Observers {
        std::map<std::uint64_t, Observer> byId;
        std::uint64_t lastId = 0;
    };

    std::shared_ptr<Observers> observers = std::make_shared<Observers>();
};

} // namespace tidemark
