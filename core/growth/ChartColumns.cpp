#include "core/growth/ChartColumns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tidemark::chartColumns {

namespace {

using Position = ChartLayout::Position;

int pixel(double length) {
    return static_cast<int>(std::lround(length));
}

/// The pixels of one step, which is horizontal or vertical.
Run pieceOf(const Position& from, const Position& to, int lineWidth) {
    const int half = lineWidth / 2;
    const int top = pixel(std::min(from.y, to.y)) - half;
    const int bottom = pixel(std::max(from.y, to.y)) - half + lineWidth;
    if (from.y != to.y)
        return {pixel(from.x) - half, pixel(from.x) - half + lineWidth, top, bottom};
    return {pixel(from.x), pixel(to.x), top, bottom};
}

/// For each column from `left` on, the stretch that the pieces cover together.
std::vector<Run> columnsOf(std::span<const Position> steps, int lineWidth) {
    const int left = pixel(steps.front().x) - lineWidth;
    const auto count = static_cast<std::size_t>(pixel(steps.back().x) + lineWidth - left);
    std::vector<Run> columns(
        count, {.top = std::numeric_limits<int>::max(), .bottom = std::numeric_limits<int>::min()});
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        const Run piece = pieceOf(steps[i], steps[i + 1], lineWidth);
        for (int x = piece.left; x < piece.right; ++x) {
            Run& column = columns[static_cast<std::size_t>(x - left)];
            column = {x, x + 1, std::min(column.top, piece.top),
                      std::max(column.bottom, piece.bottom)};
        }
    }
    return columns;
}

} // namespace

std::vector<Run> of(std::span<const Position> steps, int lineWidth) {
    std::vector<Run> runs;
    if (steps.size() < 2)
        return runs;
    for (const Run& column : columnsOf(steps, lineWidth)) {
        if (column.right == column.left)
            continue;
        const bool goesOn = !runs.empty() && runs.back().right == column.left
                            && runs.back().top == column.top && runs.back().bottom == column.bottom;
        if (goesOn)
            runs.back().right = column.right;
        else
            runs.push_back(column);
    }
    return runs;
}

} // namespace tidemark::chartColumns
