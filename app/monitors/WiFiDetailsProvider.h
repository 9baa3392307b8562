#pragma once

#include "app/base/Published.h"
#include "app/ports/WiFiNameAccess.h"
#include "app/preferences/Preferences.h"
#include "core/activity/WiFiDetails.h"

#include <functional>
#include <string>

namespace tidemark {

/// Makes the details of a Wi-Fi network for its record, and knows whether its name may be read: the
/// user has to turn on `preferenceKeys::wifiNetworkNamesEnabled`, and the system has to permit it.
/// Main thread only.
class WiFiDetailsProvider final : public Observable {
    Q_OBJECT

public:
    /// `access` is null on systems that need no permission. Both must outlive this object.
    WiFiDetailsProvider(const Preferences& preferences, WiFiNameAccess* access);

    /// Whether names are turned on and permitted.
    bool areNamesAllowed() const;
    /// The record of a reading; has the name only if that is allowed.
    WiFiContext context(const WiFiDetails::Reading& reading) const;

    Published<bool> permissionGranted{this};
    /// That names can be read, or what the user has to do so that they can; empty while names are
    /// turned off.
    Published<std::string> status{this};
    /// Called after the setting or the permission has changed.
    std::function<void()> changed = [] {};

private:
    bool isEnabled() const;
    void refresh();
    void askForPermission();
    void didChange();

    const Preferences& preferences;
    WiFiNameAccess* const access;
};

} // namespace tidemark
