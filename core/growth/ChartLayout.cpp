#include "core/growth/ChartLayout.h"

#include "core/growth/ChartScale.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace tidemark {

namespace {

/// The seconds that a chart shows at least, also when all of its points have the same time.
constexpr double shortestPeriod = 3'600;

/// The longest beginning without points that is shown, as a share of the period.
constexpr double longestLead = 0.05;

Date firstShown(const StorageChart& chart) {
    if (chart.points.empty())
        return chart.since;
    const Date first = chart.points.front().at;
    const bool isLong = first - chart.since > longestLead * (chart.through - chart.since);
    return isLong ? first : chart.since;
}

std::size_t countIn(double length, double each) {
    return each > 0 && length > each ? static_cast<std::size_t>(length / each) : 1;
}

using Steps = std::vector<ChartLayout::Position>;

/// Continues horizontally to `x`. If the last step is horizontal already, it becomes longer.
void goOn(Steps& steps, double x) {
    const double y = steps.back().y;
    if (steps.size() > 1 && steps[steps.size() - 2].y == y)
        steps.back().x = x;
    else
        steps.push_back({x, y});
}

Steps stepsOf(std::span<const StorageChart::Point> points, const ChartLayout& layout) {
    Steps steps;
    for (const auto& point : points) {
        const double x = layout.x(point.at);
        const double y = layout.y(point.bytes);
        if (!steps.empty())
            goOn(steps, x);
        if (steps.empty() || steps.back().y != y)
            steps.push_back({x, y});
    }
    return steps;
}

} // namespace

double ChartLayout::x(Date at) const {
    return left + (right - left) * ((at - since) / (through - since));
}

double ChartLayout::y(std::int64_t bytes) const {
    const double share = (static_cast<double>(bytes) - static_cast<double>(least))
                         / (static_cast<double>(most) - static_cast<double>(least));
    return bottom - (bottom - top) * share;
}

Date ChartLayout::dateAt(double at) const {
    const double share = right > left ? std::clamp((at - left) / (right - left), 0.0, 1.0) : 0;
    return since + (through - since) * share;
}

bool ChartLayout::isPlot(double atX, double atY) const {
    return atX >= left && atX <= right && atY >= top && atY <= bottom;
}

ChartLayout ChartLayout::of(const StorageChart& chart, const Metrics& metrics,
                            const Calendar& calendar) {
    ChartLayout layout;
    layout.left = metrics.leading;
    layout.right = std::max(layout.left + 1, metrics.width - metrics.trailing);
    layout.top = metrics.top;
    layout.bottom = std::max(layout.top + 1, metrics.height - metrics.bottom);
    layout.since = firstShown(chart);
    layout.through = chart.through;
    const double length = layout.through - layout.since;
    if (!(length >= shortestPeriod)) {
        const double missing = shortestPeriod - (length > 0 ? length : 0);
        layout.since = (length > 0 ? layout.since : chart.through) + -missing / 2;
        layout.through = chart.through + missing / 2;
    }
    const auto sizes = chartScale::sizeTicks(
        chart.least, chart.most, countIn(layout.bottom - layout.top, metrics.sizeHeight) + 1);
    layout.least = sizes.front().bytes;
    layout.most = std::max(sizes.back().bytes, layout.least + 1);
    for (const auto& tick : sizes)
        layout.sizes.push_back({layout.y(tick.bytes), tick.label});
    for (const auto& tick :
         chartScale::timeTicks(layout.since, layout.through,
                               countIn(layout.right - layout.left, metrics.dateWidth), calendar))
        layout.dates.push_back({layout.x(tick.at), tick.label});
    for (const auto& line : chart.lines)
        layout.lines.push_back(
            stepsOf(std::span(chart.points).subspan(line.first, line.count), layout));
    return layout;
}

} // namespace tidemark
