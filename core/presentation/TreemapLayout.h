#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tidemark {

/// A rectangle in a unit that the caller chooses; `y` grows downwards.
struct TreemapRectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    double area() const { return width * height; }
    bool contains(double atX, double atY) const {
        return atX >= x && atX < right() && atY >= y && atY < bottom();
    }
    /// The rectangle without a margin on every side; empty where the margins take all of it.
    TreemapRectangle inset(double margin) const;

    bool operator==(const TreemapRectangle&) const = default;
};

/// Divides a rectangle in proportion to sizes, by squarified treemaps (Bruls, Huizing and van Wijk,
/// 2000): tiles are laid in rows along the shorter side of what is left, and a row takes the next
/// tile as long as that makes its tiles no more oblong.
namespace treemapLayout {

/// A rectangle for each size, at its index: they fill `area` without overlapping. The largest size
/// is at the left top corner; equal ones keep their order. A size of zero or less has an empty
/// rectangle.
std::vector<TreemapRectangle> rectangles(std::span<const std::int64_t> sizes,
                                         const TreemapRectangle& area);

/// Which sizes have a tile of their own when none may have less than `smallest` of an area: the
/// indices, the largest size first, equal ones in their order. All others share one tile. Where
/// that tile would have less than `smallest`, too, the next size joins them, unless its tile is
/// large.
std::vector<std::size_t> withOwnTile(std::span<const std::int64_t> sizes, double area,
                                     double smallest);

} // namespace treemapLayout

} // namespace tidemark
