#pragma once

#include "core/base/JsonFields.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// What one capture could see, and what it could not.
struct Coverage {
    /// Folders whose applications were read completely.
    std::set<std::string> applicationRoots;
    /// Folders whose launch definitions were read completely.
    std::set<std::string> backgroundRoots;
    /// Access problems of the capture, as sentences.
    std::vector<std::string> issues;
    /// Remarks that are no problems.
    std::optional<std::vector<std::string>> notes;
    /// Paths that were left out, with all that lies below them: entries that were seen but not
    /// reported, and folders that were not read completely. Comparison leaves them out on both
    /// sides.
    std::optional<std::set<std::string>> excludedPaths;

    bool operator==(const Coverage&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"applicationRoots", &Coverage::applicationRoots},
            Field{"backgroundRoots", &Coverage::backgroundRoots},
            Field{"issues", &Coverage::issues},
            Field{"notes", &Coverage::notes},
            Field{"excludedPaths", &Coverage::excludedPaths},
        };
    }
};

} // namespace tidemark
