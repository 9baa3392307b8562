#include "app/search/SearchShortcut.h"

namespace tidemark {

SearchShortcut::SearchShortcut(const Register& registerKeys)
    : keys(registerKeys({.pressed = [this] { Q_EMIT pressed(); },
                         .availabilityChanged = [this](const auto& now) { availability = now; }})) {
}

} // namespace tidemark
