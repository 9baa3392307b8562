#pragma once

#include "app/base/Published.h"
#include "app/preferences/Preferences.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tidemark {

/// The user's settings of the appearance. Main thread only.
class ViewSettings : public Observable {
    Q_OBJECT

public:
    enum class Appearance { light, dark };
    /// Makes all windows light or dark; without a value they follow the system.
    using ApplyAppearance = std::function<void(std::optional<Appearance>)>;

    /// `preferences` must outlive this object.
    explicit ViewSettings(Preferences& preferences);

    /// The text size of the history list in points; other texts are not affected.
    std::int64_t listingTextSize() const { return textSize; }
    /// The ratio of that size to the default size.
    double listingTextScale() const;
    void changeListingTextSize(std::int64_t step);
    void resetListingTextSize();

    /// Calls `apply` with the stored choice. Called at the start and after each `changed`.
    void applyAppearance(const ApplyAppearance& apply) const;

private:
    void setListingTextSize(std::int64_t size);

    Preferences& preferences;
    Published<std::int64_t> textSize;
};

} // namespace tidemark
