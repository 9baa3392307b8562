#include "core/presentation/FolderMap.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"

#include <algorithm>
#include <cmath>

namespace tidemark {

namespace {

using Row = FolderInspectionRow;
using Tile = FolderMap::Tile;
using Trend = FolderMap::Trend;

std::int64_t magnitude(const Tile& tile) {
    return tile.change ? distanceBetween(*tile.change, 0) : 0;
}

/// Absent for a row without a size, or with a size of 0.
std::optional<Tile> tileOf(const Row& row) {
    if (row.afterBytes.value_or(0) <= 0)
        return std::nullopt;
    Tile tile{.id = row.id, .name = oneLine(row.name), .bytes = *row.afterBytes, .change = {}};
    if (row.beforeBytes)
        tile.change = saturatingDifference(tile.bytes, *row.beforeBytes);
    tile.trend = trendOf(tile.change);
    return tile;
}

std::vector<Tile> tilesOf(const std::vector<Row>& rows) {
    std::vector<Tile> tiles;
    for (const Row& row : rows)
        if (auto tile = tileOf(row))
            tiles.push_back(std::move(*tile));
    std::ranges::stable_sort(tiles, std::ranges::greater(), &Tile::bytes);
    return tiles;
}

FolderMap::Unmeasured unmeasuredOf(const Row& row) {
    const std::string name = oneLine(row.name);
    FolderMap::Unmeasured made{.id = row.id, .name = name, .text = name, .accessibleText = {}};
    const auto known = row.after ? row.after->recordedSubtotal : std::nullopt;
    made.accessibleText = name + ", " + (known ? "at least " + byteString(*known) : "unknown size");
    if (known)
        made.text += " ≥ " + byteString(*known);
    return made;
}

std::int64_t largestChange(const std::vector<Tile>& tiles) {
    std::int64_t largest = 0;
    for (const Tile& tile : tiles)
        largest = std::max({largest, magnitude(tile), largestChange(tile.parts)});
    return largest;
}

void setStrengths(std::vector<Tile>& tiles, std::int64_t largest) {
    for (Tile& tile : tiles) {
        // The square root, so that a tenth of the largest change still differs from no change.
        tile.strength =
            largest == 0
                ? 0
                : std::sqrt(static_cast<double>(magnitude(tile)) / static_cast<double>(largest));
        setStrengths(tile.parts, largest);
    }
}

} // namespace

FolderMap FolderMap::of(const std::vector<FolderInspectionRow>& rows) {
    FolderMap map;
    for (const Row& row : rows) {
        map.isCompared = map.isCompared || row.before.has_value();
        if (!row.afterBytes && row.after)
            map.unmeasured.push_back(unmeasuredOf(row));
        auto tile = tileOf(row);
        if (!tile)
            continue;
        tile->parts = tilesOf(childrenOf(row));
        map.tiles.push_back(std::move(*tile));
    }
    std::ranges::stable_sort(map.tiles, std::ranges::greater(), &Tile::bytes);
    setStrengths(map.tiles, largestChange(map.tiles));
    return map;
}

std::string nameOf(const FolderMap::Tile& tile) {
    if (!tile.name.empty())
        return tile.name;
    return tile.items == 0 ? "Not listed"
                           : std::to_string(tile.items)
                                 + (tile.items == 1 ? " smaller item" : " smaller items");
}

std::string sizeOf(const FolderMap::Tile& tile) {
    return byteString(tile.bytes);
}

std::string changeOf(const FolderMap::Tile& tile) {
    return tile.change.value_or(0) == 0 ? std::string() : signedBytes(*tile.change);
}

std::string accessibleTextOf(const FolderMap::Tile& tile) {
    std::string text = nameOf(tile) + ", " + sizeOf(tile);
    switch (tile.trend) {
    case Trend::grew:
        return text + ", grew by " + byteString(magnitude(tile));
    case Trend::shrank:
        return text + ", shrank by " + byteString(magnitude(tile));
    case Trend::same:
        return text + ", no change";
    case Trend::unknown:
        break;
    }
    return text + ", change unknown";
}

FolderMap::Tile combined(const std::vector<const FolderMap::Tile*>& tiles) {
    Tile sum{.id = {}, .name = {}, .change = 0, .items = 0};
    for (const Tile* tile : tiles) {
        sum.bytes = saturatingSum(sum.bytes, tile->bytes);
        sum.items += tile->items;
        sum.strength = std::max(sum.strength, tile->strength);
        if (!tile->change)
            sum.change.reset();
        else if (sum.change)
            sum.change = saturatingSum(*sum.change, *tile->change);
    }
    sum.trend = trendOf(sum.change);
    return sum;
}

} // namespace tidemark
