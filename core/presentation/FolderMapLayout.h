#pragma once

#include "core/presentation/FolderMap.h"
#include "core/presentation/TreemapLayout.h"

#include <cstddef>

namespace tidemark {

/// Where the tiles of a map are on a surface, laid out from left to right. The areas of folders are
/// in proportion to their sizes, and so are those of the parts within a folder.
struct FolderMapLayout {
    /// Lengths in the unit of the surface.
    struct Metrics {
        double width = 0;
        double height = 0;
        /// The strip above the parts of a folder, for its name.
        double header = 20;
        /// Between the edge of a folder and its parts.
        double margin = 3;
        /// A folder that is narrower, or not as high, is one tile without parts.
        double narrowestFolder = 60;
        double lowestFolder = 56;
        /// The smallest area of a tile. What would have less is combined.
        double smallestArea = 40;
    };

    struct Placed {
        TreemapRectangle area;
        /// The tile of the map, without its parts.
        FolderMap::Tile tile;
        /// The index of the folder that it is a part of; absent for a folder.
        std::optional<std::size_t> folder{};
        /// True when its parts are shown in it, so that only its header and its edge are its own.
        bool isOpen = false;
        /// The identifiers of what it stands for when it combines several.
        std::vector<std::string> combined{};
    };

    enum class Direction { left, right, up, down };

    /// Each folder is before its parts.
    std::vector<Placed> tiles;

    static FolderMapLayout of(const FolderMap& map, const Metrics& metrics);

    /// The innermost tile at a point.
    std::optional<std::size_t> at(double x, double y) const;
    /// The tile of a folder, or of the named part of it. For a part without a tile of its own: the
    /// tile that combines it with others, or else that of the folder.
    std::optional<std::size_t> find(const std::string& folder, const std::string& part = {}) const;
    /// The nearest tile in a direction, for the arrow keys; without `from` the first one. Open
    /// folders are left out, since their parts cover them.
    std::optional<std::size_t> next(std::optional<std::size_t> from, Direction direction) const;
};

} // namespace tidemark
