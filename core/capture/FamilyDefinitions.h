#pragma once

#include "core/capture/BackgroundDefinition.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <vector>

namespace tidemark {

/// The definitions of all folders of one family, where a file in one folder can change a definition
/// in another.
struct FamilyDefinitions {
    struct Definition {
        /// Index of the folder that it was found in.
        std::size_t folder = 0;
        std::filesystem::path path;
        std::expected<PropertyList::Dictionary, BackgroundDefinition::Failure> content;
    };

    std::vector<Definition> definitions;
    /// Links that were skipped, with the index of their folder.
    std::vector<std::pair<std::size_t, std::filesystem::path>> links;
    /// A folder that can't be read. Then nothing in any folder of the family can be compared,
    /// because that folder could change definitions in the others.
    std::optional<std::filesystem::path> unreadable;
};

} // namespace tidemark
