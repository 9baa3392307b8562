#pragma once

#include "core/base/Shared.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// Bytes of one text of an item, such as a name or a label. Every snapshot stores these texts, so
/// an item with a longer one counts as unreadable; an honest one stays far below.
inline constexpr std::size_t longestText = 4'096;

/// What a collector found in its folders, and how much of them it could see.
template <class Record>
struct Inventory {
    std::vector<Shared<Record>> items;
    /// Canonical paths of the folders that were read completely: only these may be compared.
    std::set<std::string> roots;
    /// Canonical paths of the folders that were not: what is missing there may still be on disk.
    std::set<std::string> incompleteRoots;
    /// Sentences about what is incomplete.
    std::vector<std::string> issues;
    /// Paths that were seen but not reported, and so are left out of comparison.
    std::set<std::string> excludedPaths;
    /// Sentences about boundaries that are no failures.
    std::vector<std::string> notes;
};

} // namespace tidemark
