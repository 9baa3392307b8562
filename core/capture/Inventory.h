#pragma once

#include "core/base/Shared.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// The most bytes of one text of an item, such as a name or a label. An item with a longer one
/// counts as unreadable, since every snapshot stores these texts.
inline constexpr std::size_t longestText = 4'096;

/// The items that a collector found in its folders, and which folders it could read.
template <class Record>
struct Inventory {
    std::vector<Shared<Record>> items;
    /// Canonical paths of the folders that were read completely: only these may be compared.
    std::set<std::string> roots;
    /// Canonical paths of the folders that were not: items missing there may still be on disk.
    std::set<std::string> incompleteRoots;
    /// Sentences about what is incomplete.
    std::vector<std::string> issues;
    /// Paths that were found but not reported. They are left out of comparison.
    std::set<std::string> excludedPaths;
    /// Sentences about limits that are not failures.
    std::vector<std::string> notes;
};

} // namespace tidemark
