#pragma once

#include "core/base/JsonFields.h"
#include "core/base/Shared.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// Which places one capture could read and which it could not.
struct Coverage {
    /// Folders whose applications were read completely.
    Shared<std::set<std::string>> applicationRoots;
    /// Folders whose service definitions were read completely.
    Shared<std::set<std::string>> backgroundRoots;
    /// Access problems of the capture, as sentences.
    std::vector<std::string> issues;
    /// Remarks about limits and skipped entries, as sentences; these are not problems.
    std::optional<std::vector<std::string>> notes;
    /// Paths that were left out with everything below them: entries that were found but not
    /// reported, and folders that were not read completely. A comparison ignores them on both
    /// sides.
    OptionalShared<std::set<std::string>> excludedPaths;

    bool operator==(const Coverage&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"applicationRoots", &Coverage::applicationRoots, Private},
            Field{"backgroundRoots", &Coverage::backgroundRoots, Private},
            Field{"issues", &Coverage::issues, Private},
            Field{"notes", &Coverage::notes, Private},
            Field{"excludedPaths", &Coverage::excludedPaths, Omitted},
        };
    }
};

} // namespace tidemark
