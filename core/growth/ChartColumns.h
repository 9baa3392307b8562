#pragma once

#include "core/growth/ChartLayout.h"

#include <span>
#include <vector>

/// A line of a chart on a surface of pixels. However many steps there are, a column of pixels is
/// drawn once: a line goes from left to right without a jump, so it covers one stretch of each
/// column.
namespace tidemark::chartColumns {

/// Neighbouring columns in each of which the line covers the same pixels, from `top` to `bottom`.
/// `right` and `bottom` are the first pixels that it does not cover.
struct Run {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    bool operator==(const Run&) const = default;
};

/// What a line of this width in pixels covers, from left to right; nothing for a line of one
/// position. `steps` as in `ChartLayout::lines`.
std::vector<Run> of(std::span<const ChartLayout::Position> steps, int lineWidth);

} // namespace tidemark::chartColumns
