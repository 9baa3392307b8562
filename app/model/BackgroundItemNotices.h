#pragma once

#include "app/model/ModelState.h"
#include "app/ports/DesktopNotifications.h"
#include "app/preferences/Preferences.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tidemark {

/// Shows a desktop notification for the new background items of a capture, one for all of them,
/// while the setting is on. Main thread only.
class BackgroundItemNotices : public QObject {
    Q_OBJECT

public:
    /// Creates the adapter that shows notifications; returns null on a system without one.
    using MakeNotifications = std::function<std::unique_ptr<DesktopNotifications>()>;
    /// Returns a function that opens the event with this identifier, to be called when the
    /// notification is clicked; an empty function in a program without windows.
    using OpeningOf = std::function<std::function<void()>(const std::string& eventID)>;

    /// The references must outlive this object. New items are taken from the journal of `state`.
    BackgroundItemNotices(ModelState& state, const Preferences& preferences, MakeNotifications make,
                          OpeningOf openingOf);

private:
    void followSetting();
    void followState();
    std::vector<Shared<Event>> newEvents() const;
    void notify(const std::vector<Shared<Event>>& added);

    ModelState& state;
    const Preferences& preferences;
    const MakeNotifications make;
    const OpeningOf openingOf;
    /// Null while the setting is off, and on a system without notifications.
    std::unique_ptr<DesktopNotifications> notifications;
    /// `ModelState::keptCaptures` and the identifier of the journal's last event, as last read.
    std::uint64_t captures = 0;
    std::string lastEvent;
};

} // namespace tidemark
