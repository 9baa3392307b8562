#include "core/presentation/FolderMapLayout.h"

#include "core/base/Arithmetic.h"

#include <algorithm>
#include <limits>

namespace tidemark {

namespace {

using Tile = FolderMap::Tile;
using Layout = FolderMapLayout;

/// A copy without the parts, which have tiles of their own.
Tile withoutParts(const Tile& tile) {
    return {.id = tile.id,
            .name = tile.name,
            .bytes = tile.bytes,
            .change = tile.change,
            .trend = tile.trend,
            .strength = tile.strength,
            .items = tile.items};
}

/// The size of a folder that none of its listed parts has, as a tile of its own; absent when it is
/// 0.
std::optional<Tile> remainderOf(const Tile& folder) {
    std::int64_t listed = 0;
    for (const Tile& part : folder.parts)
        listed = saturatingSum(listed, part.bytes);
    if (listed >= folder.bytes)
        return std::nullopt;
    return Tile{.id = {}, .name = {}, .bytes = folder.bytes - listed, .change = {}, .items = 0};
}

struct Candidate {
    Layout::Placed placed;
    /// Null for a tile that stands for several, and for the remainder.
    const Tile* source = nullptr;
};

/// The tiles of one level on a surface that is shared in proportion to their sizes: the large ones,
/// and one for all others. `remainder` is a further tile for a size that none of them has.
std::vector<Candidate> placedOn(const TreemapRectangle& surface, const std::vector<Tile>& tiles,
                                std::optional<Tile> remainder, double smallestArea) {
    std::vector<std::int64_t> sizes;
    for (const Tile& tile : tiles)
        sizes.push_back(tile.bytes);
    const auto own = treemapLayout::withOwnTile(sizes, surface.area(), smallestArea);
    std::vector<Candidate> placed;
    std::vector<bool> isShown(tiles.size());
    for (const std::size_t index : own) {
        isShown[index] = true;
        placed.push_back({{.area = {}, .tile = withoutParts(tiles[index])}, &tiles[index]});
    }
    std::vector<const Tile*> small;
    std::vector<std::string> ids;
    for (std::size_t i = 0; i < tiles.size(); ++i)
        if (!isShown[i]) {
            small.push_back(&tiles[i]);
            ids.push_back(tiles[i].id);
        }
    if (!small.empty())
        placed.push_back({{.area = {}, .tile = combined(small), .combined = std::move(ids)}});
    if (remainder)
        placed.push_back({{.area = {}, .tile = std::move(*remainder)}});

    sizes.clear();
    for (const auto& each : placed)
        sizes.push_back(each.placed.tile.bytes);
    const auto areas = treemapLayout::rectangles(sizes, surface);
    for (std::size_t i = 0; i < placed.size(); ++i)
        placed[i].placed.area = areas[i];
    return placed;
}

double distanceTo(double position, double from, double to) {
    return position < from ? from - position : position > to ? position - to : 0;
}

/// How far `to` is in a direction; absent where it is not in that direction.
std::optional<double> distanceBetween(const TreemapRectangle& from, const TreemapRectangle& to,
                                      Layout::Direction direction) {
    using enum Layout::Direction;
    constexpr double tolerance = 0.5;
    const bool isSideways = direction == left || direction == right;
    const double ahead = direction == right  ? to.x - from.right()
                         : direction == left ? from.x - to.right()
                         : direction == down ? to.y - from.bottom()
                                             : from.y - to.bottom();
    if (ahead < -tolerance)
        return std::nullopt;
    const double aside = isSideways ? distanceTo(from.y + from.height / 2, to.y, to.bottom())
                                    : distanceTo(from.x + from.width / 2, to.x, to.right());
    // A tile straight ahead comes before a nearer one that is off to the side.
    return ahead + 4 * aside;
}

bool standsFor(const Layout::Placed& placed, const std::string& id) {
    return placed.tile.id == id || std::ranges::find(placed.combined, id) != placed.combined.end();
}

} // namespace

FolderMapLayout FolderMapLayout::of(const FolderMap& map, const Metrics& metrics) {
    FolderMapLayout layout;
    const TreemapRectangle surface{0, 0, metrics.width, metrics.height};
    for (auto& [folder, source] : placedOn(surface, map.tiles, {}, metrics.smallestArea)) {
        const std::size_t index = layout.tiles.size();
        folder.isOpen = source && !source->parts.empty()
                        && folder.area.width >= metrics.narrowestFolder
                        && folder.area.height >= metrics.lowestFolder;
        layout.tiles.push_back(std::move(folder));
        if (!layout.tiles.back().isOpen)
            continue;
        TreemapRectangle inner = layout.tiles.back().area.inset(metrics.margin);
        inner.height -= metrics.header - metrics.margin;
        inner.y += metrics.header - metrics.margin;
        for (auto& each :
             placedOn(inner, source->parts, remainderOf(*source), metrics.smallestArea)) {
            each.placed.folder = index;
            layout.tiles.push_back(std::move(each.placed));
        }
    }
    return layout;
}

std::optional<std::size_t> FolderMapLayout::at(double x, double y) const {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < tiles.size(); ++i)
        if (tiles[i].area.contains(x, y))
            found = i;
    return found;
}

std::optional<std::size_t> FolderMapLayout::find(const std::string& folder,
                                                 const std::string& part) const {
    std::optional<std::size_t> whole;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const Placed& each = tiles[i];
        const bool isPart = each.folder.has_value();
        if (isPart && each.folder != whole)
            continue;
        const std::string& wanted = isPart ? part : folder;
        if (wanted.empty() || !standsFor(each, wanted))
            continue;
        if (isPart || part.empty())
            return i;
        whole = i;
    }
    return whole;
}

std::optional<std::size_t> FolderMapLayout::next(std::optional<std::size_t> from,
                                                 Direction direction) const {
    std::optional<std::size_t> nearest;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (tiles[i].isOpen || i == from)
            continue;
        const auto distance =
            from ? distanceBetween(tiles[*from].area, tiles[i].area, direction) : 0.0;
        if (!distance || *distance >= least)
            continue;
        least = *distance;
        nearest = i;
    }
    return nearest;
}

} // namespace tidemark
