#include "core/presentation/TreemapLayout.h"

#include <algorithm>
#include <numeric>

namespace tidemark {

TreemapRectangle TreemapRectangle::inset(double margin) const {
    const double across = std::min(margin, width / 2);
    const double down = std::min(margin, height / 2);
    return {x + across, y + down, width - 2 * across, height - 2 * down};
}

namespace treemapLayout {

namespace {

/// A tile that is this many times as large as the smallest is not combined with others.
constexpr double largeFactor = 4;

/// The indices of the sizes above zero, the largest first.
std::vector<std::size_t> largestFirst(std::span<const std::int64_t> sizes) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        if (sizes[i] > 0)
            order.push_back(i);
    std::ranges::stable_sort(order, std::ranges::greater(),
                             [&](std::size_t index) { return sizes[index]; });
    return order;
}

/// A floating-point sum, because the sum of all sizes may not fit into 64 bits.
double sumOf(std::span<const std::int64_t> sizes, std::span<const std::size_t> of) {
    return std::accumulate(of.begin(), of.end(), 0.0, [&](double sum, std::size_t index) {
        return sum + static_cast<double>(sizes[index]);
    });
}

/// The ratio of the longer to the shorter side of the most oblong tile in a row. `sum` is the area
/// of the whole row, and `side` its length.
double worstRatio(double largest, double smallest, double sum, double side) {
    return std::max(side * side * largest / (sum * sum), sum * sum / (side * side * smallest));
}

/// How many of `areas`, the largest first, form the next row along `side`.
std::size_t rowLength(std::span<const double> areas, double side) {
    double sum = areas.front();
    double worst = worstRatio(areas.front(), areas.front(), sum, side);
    std::size_t count = 1;
    for (; count < areas.size(); ++count) {
        const double next = worstRatio(areas.front(), areas[count], sum + areas[count], side);
        if (next > worst)
            break;
        worst = next;
        sum += areas[count];
    }
    return count;
}

/// Lays one row at the left, or at the top where what is left is higher than wide, and takes it off
/// `left`. The last tile of a row and the last row end exactly where their surroundings do, so that
/// rounding leaves no gap.
void layRow(std::span<const double> areas, std::span<TreemapRectangle*> tiles,
            TreemapRectangle& left, bool isLast) {
    const double sum = std::accumulate(areas.begin(), areas.end(), 0.0);
    const bool isColumn = left.width >= left.height;
    const double side = isColumn ? left.height : left.width;
    const double across = isColumn ? left.width : left.height;
    const double thickness = isLast ? across : std::min(across, sum / side);
    double offset = 0;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const double length =
            i + 1 == tiles.size() ? std::max(0.0, side - offset) : side * areas[i] / sum;
        *tiles[i] = isColumn ? TreemapRectangle{left.x, left.y + offset, thickness, length}
                             : TreemapRectangle{left.x + offset, left.y, length, thickness};
        offset += length;
    }
    if (isColumn) {
        left.x += thickness;
        left.width -= thickness;
    } else {
        left.y += thickness;
        left.height -= thickness;
    }
}

} // namespace

std::vector<TreemapRectangle> rectangles(std::span<const std::int64_t> sizes,
                                         const TreemapRectangle& area) {
    std::vector<TreemapRectangle> all(sizes.size());
    const auto order = largestFirst(sizes);
    if (order.empty() || area.area() <= 0)
        return all;
    const double scale = area.area() / sumOf(sizes, order);
    std::vector<double> areas;
    std::vector<TreemapRectangle*> tiles;
    for (const std::size_t index : order) {
        areas.push_back(static_cast<double>(sizes[index]) * scale);
        tiles.push_back(&all[index]);
    }
    TreemapRectangle left = area;
    for (std::size_t done = 0; done < areas.size();) {
        const auto rest = std::span(areas).subspan(done);
        const std::size_t count = rowLength(rest, std::min(left.width, left.height));
        layRow(rest.first(count), std::span(tiles).subspan(done, count), left,
               count == rest.size());
        done += count;
    }
    return all;
}

std::vector<std::size_t> withOwnTile(std::span<const std::int64_t> sizes, double area,
                                     double smallest) {
    auto order = largestFirst(sizes);
    const double sum = sumOf(sizes, order);
    double others = 0;
    const auto areaOf = [&](double bytes) { return area * bytes / sum; };
    while (!order.empty()) {
        const auto last = static_cast<double>(sizes[order.back()]);
        const bool isLargeEnough = areaOf(last) >= smallest;
        const bool isLarge = areaOf(last) >= largeFactor * smallest;
        if (isLarge || (isLargeEnough && (others == 0 || areaOf(others) >= smallest)))
            break;
        others += last;
        order.pop_back();
    }
    return order;
}

} // namespace treemapLayout

} // namespace tidemark
