#include "app/monitors/WiFiDetailsProvider.h"

#include "app/preferences/FollowSettings.h"

namespace tidemark {

using Permission = WiFiNameAccess::Permission;

WiFiDetailsProvider::WiFiDetailsProvider(const Preferences& preferences, WiFiNameAccess* access)
    : preferences(preferences), access(access) {
    refresh();
    const auto use = [this] {
        refresh();
        if (isEnabled())
            askForPermission();
        changed();
    };
    followSettings(preferences, this, use, preferenceKeys::wifiNetworkNamesEnabled);
    if (access)
        access->follow([this] { didChange(); });
}

bool WiFiDetailsProvider::isEnabled() const {
    return read(preferences, preferenceKeys::wifiNetworkNamesEnabled);
}

bool WiFiDetailsProvider::areNamesAllowed() const {
    return isEnabled() && (!access || access->permission() == Permission::granted);
}

WiFiContext WiFiDetailsProvider::context(const WiFiDetails::Reading& reading) const {
    return WiFiDetails::context(reading, areNamesAllowed());
}

void WiFiDetailsProvider::refresh() {
    permissionGranted =
        !access || (access->permission() == Permission::granted && access->isServiceOn());
    if (!isEnabled())
        status = "";
    else if (*permissionGranted)
        status = "Wi-Fi name access is enabled.";
    else
        status = "In System Settings → Privacy & Security → Location Services, enable Location "
                 "Services and Tidemark.";
}

void WiFiDetailsProvider::askForPermission() {
    if (!access)
        return;
    if (!access->isServiceOn() || access->permission() == Permission::denied)
        access->openSettings();
    else if (access->permission() == Permission::undetermined)
        access->request();
}

void WiFiDetailsProvider::didChange() {
    refresh();
    changed();
}

} // namespace tidemark
