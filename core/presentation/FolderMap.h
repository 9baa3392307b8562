#pragma once

#include "core/presentation/FolderSizeTable.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// What a map of folder sizes shows: a tile for each folder with a known size, and in it a tile for
/// each of its parts. A size that is not known completely never becomes an area; folders with such
/// a size are listed beside the map. The texts of a tile are made when it is painted, since a
/// folder can have thousands of parts.
struct FolderMap {
    using Trend = FolderSizeTable::Trend;

    static constexpr std::string_view title = "Map of Folder Sizes";
    static constexpr std::string_view unmeasuredTitle = "Not completely measured:";

    struct Tile {
        /// The id of its row in the table; empty for a tile that stands for several, or for what is
        /// not listed.
        std::string id;
        /// On one line; empty where `id` is.
        std::string name;
        std::int64_t bytes = 0;
        /// The change of the size since the earlier capture; absent where that is not known.
        std::optional<std::int64_t> change;
        Trend trend = Trend::unknown;
        /// How strongly the tile is coloured, from 0 to 1: the square root of its change divided by
        /// the largest change in the map. A tile that stands for several has the largest of theirs.
        double strength = 0;
        /// How many items it stands for; 0 for the part of a folder that is not listed.
        std::size_t items = 1;
        /// The largest first. They may have less than `bytes` together, when not all of the folder
        /// is recorded by parts.
        std::vector<Tile> parts{};
    };

    /// A folder without a complete size.
    struct Unmeasured {
        std::string id;
        std::string name;
        /// The name, and the part of the size that is known: "Machines ≥ 6 GB".
        std::string text;
        std::string accessibleText;
    };

    /// The largest first.
    std::vector<Tile> tiles;
    std::vector<Unmeasured> unmeasured;
    /// False where only the latest sizes are shown, so that no tile has a change.
    bool isCompared = false;

    bool isEmpty() const { return tiles.empty() && unmeasured.empty(); }

    /// The map of the rows of one level of the table, with those of the next level as their parts.
    static FolderMap of(const std::vector<FolderInspectionRow>& rows);
};

/// "target", "12 smaller items", or "Not listed".
std::string nameOf(const FolderMap::Tile& tile);
/// "39.08 GB"
std::string sizeOf(const FolderMap::Tile& tile);
/// "+6.1 GB"; empty where nothing changed or nothing is known.
std::string changeOf(const FolderMap::Tile& tile);
/// Name, size and change in one sentence, for a screen reader.
std::string accessibleTextOf(const FolderMap::Tile& tile);

/// The tile that stands for several small ones.
FolderMap::Tile combined(const std::vector<const FolderMap::Tile*>& tiles);

} // namespace tidemark
