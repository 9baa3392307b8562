#include "recorder/ChartPrinter.h"

#include "core/base/Text.h"
#include "core/growth/ChartScale.h"
#include "core/growth/StorageChartText.h"
#include "recorder/Columns.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tidemark {

namespace {

constexpr std::size_t rows = 12;
constexpr std::size_t sizeTickLimit = 5;
/// The columns that each date below the drawing needs.
constexpr std::size_t dateWidth = 12;
/// The most lines of one kind below the drawing.
constexpr std::size_t noteLimit = 8;

/// The characters of the drawing, row 0 at the top.
class Grid {
public:
    explicit Grid(std::size_t width) : lines(rows, std::string(width, ' ')) {}

    std::size_t width() const { return lines.front().size(); }
    void set(std::size_t column, std::size_t row, char sign) { lines[row][column] = sign; }
    void setIfEmpty(std::size_t column, std::size_t row, char sign) {
        if (lines[row][column] == ' ')
            lines[row][column] = sign;
    }
    const std::string& line(std::size_t row) const { return lines[row]; }

private:
    std::vector<std::string> lines;
};

/// The columns of times and the lines of sizes in the drawing.
class Axes {
public:
    Axes(const StorageChart& chart, std::size_t width)
        : since(chart.since), length(chart.through - chart.since), width(width),
          sizes(chartScale::sizeTicks(chart.least, chart.most, sizeTickLimit)) {}

    std::size_t column(Date at) const {
        const double part = length > 0 ? (at - since) / length : 0;
        const auto last = static_cast<double>(width - 1);
        return static_cast<std::size_t>(std::clamp(std::round(part * last), 0.0, last));
    }
    std::size_t row(std::int64_t bytes) const {
        const auto low = static_cast<double>(sizes.front().bytes);
        const auto high = static_cast<double>(sizes.back().bytes);
        const double part = (static_cast<double>(bytes) - low) / (high - low);
        return static_cast<std::size_t>(
            std::round((1 - std::clamp(part, 0.0, 1.0)) * static_cast<double>(rows - 1)));
    }
    /// The label of the size at a row; empty where there is none.
    std::string label(std::size_t at) const {
        for (const auto& tick : sizes)
            if (row(tick.bytes) == at)
                return tick.label;
        return {};
    }
    std::size_t labelWidth() const {
        std::size_t most = 0;
        for (const auto& tick : sizes)
            most = std::max(most, columns(tick.label));
        return most;
    }

private:
    Date since;
    double length;
    std::size_t width;
    std::vector<chartScale::SizeTick> sizes;
};

void drawGaps(Grid& grid, const StorageChart& chart, const Axes& axes) {
    for (const auto& gap : chart.gaps)
        for (auto column = axes.column(gap.start) + 1; column < axes.column(gap.end); ++column)
            for (std::size_t row = column % 2; row < rows; row += 2)
                grid.set(column, row, '/');
}

void drawBreaks(Grid& grid, const StorageChart& chart, const Axes& axes) {
    for (const auto& edge : chart.breaks)
        for (std::size_t row = 0; row < rows; ++row)
            grid.set(axes.column(edge.at), row, '!');
}

/// The step from one joined size to the next: the size stays until the next one is measured.
void drawStep(Grid& grid, const Axes& axes, const StorageChart::Point& from,
              const StorageChart::Point& to) {
    const auto end = axes.column(to.at);
    const auto before = axes.row(from.bytes);
    const auto after = axes.row(to.bytes);
    for (auto column = axes.column(from.at) + 1; column < end; ++column)
        grid.set(column, before, '-');
    // std::minmax returns references to its arguments, so these must be variables.
    const auto [top, bottom] = std::minmax(before, after);
    for (auto row = top + 1; row < bottom; ++row)
        grid.setIfEmpty(end, row, '|');
}

void drawPoints(Grid& grid, const StorageChart& chart, const Axes& axes) {
    for (const auto& line : chart.lines)
        for (std::size_t i = line.first + 1; i < line.first + line.count; ++i)
            drawStep(grid, axes, chart.points[i - 1], chart.points[i]);
    for (const auto& point : chart.points)
        grid.set(axes.column(point.at), axes.row(point.bytes), '*');
}

std::string flagLine(const StorageChart& chart, const Axes& axes, std::size_t width) {
    std::string line(width, ' ');
    for (const auto& flag : chart.flags)
        line[axes.column(flag.at)] = 'v';
    return line;
}

/// The dates below the drawing, as far as they don't overlap.
std::string dateLine(const StorageChart& chart, const Axes& axes, std::size_t width,
                     const Calendar& calendar) {
    std::string line;
    const auto ticks =
        chartScale::timeTicks(chart.since, chart.through, width / dateWidth, calendar);
    for (const auto& tick : ticks) {
        const auto column = axes.column(tick.at);
        const auto used = columns(line);
        if (column + columns(tick.label) > width || (used > 0 && column <= used))
            continue;
        line += std::string(column - used, ' ') + tick.label;
    }
    return line;
}

std::string withoutTrailingSpaces(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

/// Up to `noteLimit` notes of one kind, the newest first.
template <class Notes, class TextOf>
std::string notes(const Notes& all, TextOf textOf) {
    std::string out;
    std::size_t shown = 0;
    for (auto note = all.rbegin(); note != all.rend() && shown < noteLimit; ++note, ++shown)
        out += textOf(*note) + "\n";
    if (all.size() > shown)
        out += "  and " + std::to_string(all.size() - shown) + " more\n";
    return out;
}

std::string legend(const StorageChart& chart, const Calendar& calendar) {
    const auto moment = [&](Date at) { return calendar.format(at, "d MMM yyyy, HH:mm"); };
    std::string out = notes(chart.flags, [&](const auto& flag) {
        return "v " + moment(flag.at) + "  " + oneLine(flag.name);
    });
    out += notes(chart.gaps, [&](const auto& gap) {
        return "/ " + moment(gap.start) + " – " + moment(gap.end) + "  " + gap.text;
    });
    return out + notes(chart.breaks, [&](const auto& edge) {
               return "! " + moment(edge.at) + "  " + edge.text;
           });
}

} // namespace

ChartPrinter::ChartPrinter(const Calendar& calendar, std::size_t width)
    : calendar(calendar), width(std::clamp(width, leastWidth, mostWidth)) {}

std::string ChartPrinter::text(const StorageChart& chart) const {
    std::string out = storageChartText::summary(chart, calendar) + "\n";
    if (chart.points.empty())
        return out;
    const auto labels = Axes(chart, 1).labelWidth();
    // One column is kept free, so that no terminal wraps the lines.
    const std::size_t drawn = width - labels - 3;
    const Axes axes(chart, drawn);
    Grid grid(drawn);
    drawGaps(grid, chart, axes);
    drawBreaks(grid, chart, axes);
    drawPoints(grid, chart, axes);
    const std::string indent(labels + 2, ' ');
    out += "\n";
    if (!chart.flags.empty())
        out += withoutTrailingSpaces(indent + flagLine(chart, axes, drawn)) + "\n";
    for (std::size_t row = 0; row < rows; ++row) {
        const std::string label = axes.label(row);
        out += std::string(labels - columns(label), ' ') + label + " |"
               + withoutTrailingSpaces(grid.line(row)) + "\n";
    }
    out += std::string(labels + 1, ' ') + "+" + std::string(drawn, '-') + "\n";
    out += withoutTrailingSpaces(indent + dateLine(chart, axes, drawn, calendar)) + "\n";
    const std::string notes = legend(chart, calendar);
    return notes.empty() ? out : out + "\n" + notes;
}

} // namespace tidemark
