#pragma once

#include <functional>
#include <string>

namespace tidemark {

/// Shows notifications of the desktop. Main thread only.
class DesktopNotifications {
public:
    virtual ~DesktopNotifications() = default;

    struct Notification {
        /// Plain text in one line.
        std::string title;
        /// Plain text; may have several lines.
        std::string body;
        /// Called on the main thread when the user activates the notification.
        std::function<void()> activated{};
    };

    /// Shows a notification in place of the last one of this object, if that is still shown. Does
    /// not block. Where nothing shows notifications at present, the notification is dropped.
    virtual void show(Notification notification) = 0;
};

} // namespace tidemark
