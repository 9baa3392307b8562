#include "app/search/SearchShortcut.h"

namespace tidemark {

SearchShortcut::SearchShortcut(const Register& registerKeys)
    : keys(registerKeys(
          {.pressed = [this] { Q_EMIT pressed(); },
           .availabilityChanged = [this](bool isAvailable) { available = isAvailable; }})) {}

} // namespace tidemark
