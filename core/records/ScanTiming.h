#pragma once

#include "core/base/JsonFields.h"

#include <string>

namespace tidemark {

/// How long one stage of a capture took.
struct ScanTiming {
    std::string name;
    double seconds = 0;
    /// True when the stage finished without a new issue.
    bool complete = false;

    bool operator==(const ScanTiming&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"name", &ScanTiming::name, Private},
            Field{"seconds", &ScanTiming::seconds},
            Field{"complete", &ScanTiming::complete},
        };
    }
};

} // namespace tidemark
