#include "app/settings/ViewSettings.h"

#include "app/preferences/FollowSettings.h"

#include <algorithm>

namespace tidemark {

ViewSettings::ViewSettings(Preferences& preferences)
    : preferences(preferences), textSize(this, read(preferences, preferenceKeys::listingTextSize)) {
    followSettings(
        preferences, this,
        [this, &preferences] { textSize = read(preferences, preferenceKeys::listingTextSize); },
        preferenceKeys::listingTextSize);
    followSettings(preferences, this, [this] { noteChange(); }, preferenceKeys::appearanceMode);
}

double ViewSettings::listingTextScale() const {
    return static_cast<double>(textSize)
           / static_cast<double>(preferenceKeys::listingTextSize.fallback);
}

void ViewSettings::changeListingTextSize(std::int64_t step) {
    setListingTextSize(textSize + step);
}

void ViewSettings::resetListingTextSize() {
    setListingTextSize(preferenceKeys::listingTextSize.fallback);
}

void ViewSettings::setListingTextSize(std::int64_t size) {
    constexpr auto& key = preferenceKeys::listingTextSize;
    const std::int64_t held = std::clamp(size, key.least, key.most);
    if (held == textSize)
        return;
    textSize = held;
    preferences.set(key.name, held);
}

void ViewSettings::applyAppearance(const ApplyAppearance& apply) const {
    const auto mode = read(preferences, preferenceKeys::appearanceMode);
    if (mode == "light")
        apply(Appearance::light);
    else if (mode == "dark")
        apply(Appearance::dark);
    else
        apply(std::nullopt);
}

} // namespace tidemark
