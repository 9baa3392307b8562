#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/records/VolumeContext.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tidemark {

/// The mode of a display: sizes in pixels and in points.
struct DisplayContext {
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    std::int64_t logicalWidth = 0;
    std::int64_t logicalHeight = 0;
    double scale = 1;
    /// Hertz, above 0.
    std::optional<double> refreshRate;
    bool builtIn = false;

    /// Both sizes, as in "3024 × 1964 pixels · 1512 × 982 points".
    std::string label() const;

    bool operator==(const DisplayContext&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"pixelWidth", &DisplayContext::pixelWidth},
            Field{"pixelHeight", &DisplayContext::pixelHeight},
            Field{"logicalWidth", &DisplayContext::logicalWidth},
            Field{"logicalHeight", &DisplayContext::logicalHeight},
            Field{"scale", &DisplayContext::scale},
            Field{"refreshRate", &DisplayContext::refreshRate},
            Field{"builtIn", &DisplayContext::builtIn},
        };
    }
};

/// A volume, a display or the thermal state, as observed or as changed.
struct EnvironmentActivity {
    /// Volume name, display name, or the machine for thermal states.
    std::string deviceName;
    /// Mount point of a volume.
    std::optional<std::string> path;
    /// True when a volume was mounted or a display connected, false when it was unmounted or
    /// disconnected; absent when neither happened.
    std::optional<bool> connected;
    std::optional<VolumeContext> volume;
    std::optional<DisplayContext> display;
    std::optional<DisplayContext> previousDisplay;
    std::optional<std::string> previousState;
    /// When the thermal state became elevated.
    std::optional<Date> elevatedSince;
    /// Thermal state.
    std::optional<std::string> state;

    bool operator==(const EnvironmentActivity&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"deviceName", &EnvironmentActivity::deviceName, Private},
            Field{"path", &EnvironmentActivity::path, Private},
            Field{"connected", &EnvironmentActivity::connected},
            Field{"volume", &EnvironmentActivity::volume},
            Field{"display", &EnvironmentActivity::display},
            Field{"previousDisplay", &EnvironmentActivity::previousDisplay},
            Field{"previousState", &EnvironmentActivity::previousState, Shown},
            Field{"elevatedSince", &EnvironmentActivity::elevatedSince},
            Field{"state", &EnvironmentActivity::state, Shown},
        };
    }
};

} // namespace tidemark
