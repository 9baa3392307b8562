#pragma once

#include "core/base/JsonFields.h"

#include <string>
#include <tuple>

namespace tidemark {

/// What one monitor observes at present.
struct MonitorStatus {
    /// Such as "Battery".
    std::string name;
    std::string text;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &MonitorStatus::name, Shown},
                          Field{"text", &MonitorStatus::text, Shown}};
    }
};

} // namespace tidemark
