#pragma once

#include "app/base/Published.h"
#include "app/preferences/Preferences.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tidemark {

/// How the screens look, as the user set it. Main thread only.
class ViewSettings : public Observable {
    Q_OBJECT

public:
    enum class Appearance { light, dark };
    /// Makes all windows light or dark; without a value the system's own choice holds.
    using ApplyAppearance = std::function<void(std::optional<Appearance>)>;

    /// `preferences` outlive this.
    explicit ViewSettings(Preferences& preferences);

    /// The text size of the history list, in points; of no other text.
    std::int64_t listingTextSize() const { return textSize; }
    void changeListingTextSize(std::int64_t step);
    void resetListingTextSize();

    /// The stored choice: at the start, and after each `changed`.
    void applyAppearance(const ApplyAppearance& apply) const;

private:
    void setListingTextSize(std::int64_t size);

    Preferences& preferences;
    Published<std::int64_t> textSize;
};

} // namespace tidemark
