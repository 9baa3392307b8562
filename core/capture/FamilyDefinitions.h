#pragma once

#include "core/capture/BackgroundDefinition.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <vector>

namespace tidemark {

/// What the folders of one family define together, where a file in one folder can change what
/// another says.
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
    /// A folder that can't be read. Nothing in any folder of the family can be compared then, as
    /// what it would say about the others is not known.
    std::optional<std::filesystem::path> unreadable;
};

} // namespace tidemark
