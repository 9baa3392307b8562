#pragma once

#include "app/ports/GlobalShortcut.h"
#include "platform/linux/BusService.h"
#include "platform/linux/KeySequence.h"

namespace tidemark {

/// The shortcut for versions of KDE whose portal offers none: KGlobalAccel (org.kde.kglobalaccel).
/// Keys that the user changed in the settings of KDE are kept. Does not start the service. Main
/// thread only.
class KdeShortcut final : public GlobalShortcut {
public:
    KdeShortcut(const MessageBus& session, Observer observer);
    ~KdeShortcut() override;

    /// Whether the service runs.
    bool isOffered() const { return accelerators.isThere(); }

private:
    void follow();
    void assign();
    void take(const QList<KeySequence>& assigned);
    void listen();
    void report(const Availability& availability);

    const Observer observer;
    Availability last;
    BusService accelerators;
    /// `Availability::keys`.
    std::string keys;
    BusService::Subscription pressed;
    BusService::Subscription changed;
};

} // namespace tidemark
