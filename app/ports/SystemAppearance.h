#pragma once

#include <functional>
#include <optional>

namespace tidemark {

/// The appearance that the user chose for the whole desktop.
struct SystemAppearance {
    /// Absent where the user has no preference or the desktop reports none.
    std::optional<bool> isDark{};
    bool hasHighContrast = false;

    bool operator==(const SystemAppearance&) const = default;
};

/// Reads the appearance and follows it for the lifetime of this object. Main thread only.
class SystemAppearanceSource {
public:
    /// Called from the event loop when the appearance has been read, and after each change.
    using Changed = std::function<void(const SystemAppearance&)>;

    virtual ~SystemAppearanceSource() = default;
};

} // namespace tidemark
