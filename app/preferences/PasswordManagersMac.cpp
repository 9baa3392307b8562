#include "app/preferences/PreferenceKeys.h"

namespace tidemark::preferenceKeys::detail {

std::string_view passwordManagers() {
    return "com.1password.1password, com.agilebits.onepassword7, com.bitwarden.desktop, "
           "com.apple.Passwords";
}

} // namespace tidemark::preferenceKeys::detail
