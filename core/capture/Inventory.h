#pragma once

#include "core/base/Shared.h"

#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// What a collector found in its folders, and how much of them it could see.
template <class Record>
struct Inventory {
    std::vector<Shared<Record>> items;
    /// Canonical paths of the folders that were read completely: only these may be compared.
    std::set<std::string> roots;
    /// Sentences about what is incomplete.
    std::vector<std::string> issues;
    /// Paths that were seen but not reported, and so are left out of comparison.
    std::set<std::string> excludedPaths;
    /// Sentences about boundaries that are no failures.
    std::vector<std::string> notes;
};

} // namespace tidemark
