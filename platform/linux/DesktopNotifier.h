#pragma once

#include "app/ports/DesktopNotifications.h"
#include "platform/linux/BusService.h"

#include <functional>
#include <optional>

namespace tidemark {

/// Shows notifications through the service of the desktop
/// (https://specifications.freedesktop.org/notification-spec/1.2). The service is never started by
/// this class: where none runs, nothing is shown. Main thread only.
class DesktopNotifier final : public DesktopNotifications {
public:
    explicit DesktopNotifier(const MessageBus& bus);

    void show(Notification notification) override;

private:
    void follow();
    void send();
    void takeNumber(const QDBusMessage& reply);
    void takeCapabilities(const QDBusMessage& reply);
    void takeAction(const QDBusMessage& signal);
    void takeClosing(const QDBusMessage& signal);

    /// The last notification, while it is shown or still to be sent.
    std::optional<Notification> current;
    /// Its number at the service; 0 when none is shown.
    unsigned shown = 0;
    /// The service has not replied to the last notification yet, so its number is not known.
    bool isSending = false;
    /// Another notification came meanwhile.
    bool isOutdated = false;
    /// Whether the service takes the text as markup; absent until it has replied.
    std::optional<bool> takesMarkup;
    BusService service;
    BusService::Subscription actions;
    BusService::Subscription closings;
};

} // namespace tidemark
