#pragma once

#include "app/ports/GlobalShortcut.h"
#include "platform/linux/BusService.h"

#include <functional>
#include <string_view>

namespace tidemark {

/// A shortcut of the desktop portal (https://flatpak.github.io/xdg-desktop-portal,
/// GlobalShortcuts). The desktop asks the user which keys to assign, once; they are bound again
/// whenever the portal starts. Does not start the portal. Main thread only.
class PortalShortcut final : public GlobalShortcut {
public:
    /// The obstacle where there is no portal, or where it has no shortcuts.
    static constexpr std::string_view notOffered =
        "This desktop has no keys that work in every program.";
    static constexpr std::string_view refused = "The desktop did not assign the keys.";

    PortalShortcut(const MessageBus& session, Observer observer);

private:
    /// Receives the results of a request; called with none when it was refused.
    using Use = std::function<void(const QVariantMap& results)>;

    void follow();
    void createSession();
    void list();
    void bind();
    /// Reports the keys of the own shortcut and returns true; returns false when it is not among
    /// these.
    bool isAmong(const QVariant& shortcuts);
    /// Makes a request, which the portal answers later; it may ask the user first.
    void ask(const QString& method, const QVariantList& arguments, QVariantMap options, Use use);
    void report(const Availability& availability);

    const Observer observer;
    Availability last;
    BusService portal;
    /// The object path of the session; empty without one.
    QString session;
    int requests = 0;
    BusService::Subscription response;
    BusService::Subscription activated;
    /// The user assigned other keys in the settings of the desktop.
    BusService::Subscription changed;
};

} // namespace tidemark
