#pragma once

#include "core/base/Shared.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace tidemark {

/// The most bytes of one text of an item, such as a name or a label. An item with a longer one
/// counts as unreadable, since every snapshot stores these texts.
inline constexpr std::size_t longestText = 4'096;

/// Whether every text member of the record itself has at most `longestText` bytes. The path is not
/// checked, because the system limits its length.
template <class Record>
bool hasStorableTexts(const Record& record) {
    const auto isStorable = [&](const auto& field) {
        const auto& value = record.*field.member;
        using Value = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, std::string>)
            return value.size() <= longestText || field.name == "path";
        else if constexpr (std::is_same_v<Value, std::optional<std::string>>)
            return !value || value->size() <= longestText;
        else
            return true;
    };
    return std::apply([&](const auto&... fields) { return (isStorable(fields) && ...); },
                      Record::fields());
}

/// The items that a collector found in its folders, and which folders it could read.
template <class Record>
struct Inventory {
    std::vector<Shared<Record>> items;
    /// Canonical paths of the folders that were read completely: only these may be compared.
    std::set<std::string> roots;
    /// Canonical paths of the folders that were not read completely: items missing there may still
    /// be on disk.
    std::set<std::string> incompleteRoots;
    /// Sentences about what is incomplete.
    std::vector<std::string> issues;
    /// Paths that are left out of comparison: of what was found but is not in `items`, and of items
    /// that lack a part, such as their version.
    std::set<std::string> excludedPaths;
    /// Sentences about limits that are not failures.
    std::vector<std::string> notes;
};

} // namespace tidemark
