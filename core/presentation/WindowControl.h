#pragma once

#include "core/presentation/HistoryTimeWindow.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// One entry of the choice of the time window.
struct WindowOption {
    /// The raw value of a `HistoryTimeWindow`.
    std::string_view range;
    std::string label;
    bool isSelected = false;

    bool operator==(const WindowOption&) const = default;
};

/// All windows in their order. A `range` that is no raw value shows the whole history, so `all` is
/// selected for it.
std::vector<WindowOption> windowOptions(std::string_view range, std::int64_t customDays);

} // namespace tidemark
