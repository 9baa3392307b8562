#include "app/preferences/PreferenceKeys.h"

namespace tidemark::preferenceKeys::detail {

/// The identifiers of the desktop entries of password managers. They are listed because some of
/// these programs do not mark what they copy as a secret.
std::string_view passwordManagers() {
    return "1password, com.1password.1password, bitwarden, com.bitwarden.desktop, "
           "org.gnome.World.Secrets, org.gnome.seahorse.Application, "
           "org.kde.kwalletmanager, org.kde.kwalletmanager5, org.keepassxc.KeePassXC";
}

} // namespace tidemark::preferenceKeys::detail
