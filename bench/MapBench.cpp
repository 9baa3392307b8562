// The map of folder sizes and the chart of storage over time, as the window draws them.

#include "bench/MeasuredLoop.h"
#include "bench/Report.h"
#include "core/presentation/FolderMapLayout.h"
#include "views/folders/FolderMapView.h"
#include "views/storage/StorageChartView.h"

#include <QApplication>

using namespace tidemark;

namespace {

constexpr int runs = 21;
constexpr int tiles = 5'000;
constexpr std::size_t captures = 720;

/// Rows of `count` folders: a third grew, a third shrank, a third kept its size.
std::vector<FolderInspectionRow> foldersSideBySide(int count) {
    std::vector<FolderInspectionRow> rows;
    for (int i = 0; i < count; ++i) {
        FolderInspectionRow row;
        row.name = "folder " + std::to_string(i);
        row.id = "/home/ada/Projects/" + row.name;
        row.afterBytes = 1'000'000 + i * 7'919 % 900'000;
        row.beforeBytes = *row.afterBytes + (i % 3 - 1) * 1'000LL;
        FolderInspectionNode& node = row.after.emplace();
        node.path = row.id;
        node.name = row.name;
        node.bytes = row.afterBytes;
        row.before = node;
        rows.push_back(std::move(row));
    }
    return rows;
}

void measureMap() {
    const auto map = FolderMap::of(foldersSideBySide(tiles));
    const FolderMapLayout::Metrics metrics{.width = 1000, .height = 700};
    std::size_t placed = 0;
    bench::row("map of 5,000 folders laid out, median",
               1000
                   * bench::medianOf(runs,
                                     [&] {
                                         return bench::seconds([&] {
                                             placed =
                                                 FolderMapLayout::of(map, metrics).tiles.size();
                                         });
                                     }),
               "ms", 5);
    if (placed != tiles)
        bench::row("tiles are missing", 1, "", 0.5);
    FolderMapView view;
    view.resize(1000, 700);
    view.present(map);
    view.show();
    QApplication::processEvents();
    bench::row("  drawn, median",
               1000
                   * bench::medianOf(runs, [&] { return bench::seconds([&] { view.repaint(); }); }),
               "ms", 10);
}

/// 720 captures with a gap now and then, and an event at every third of them.
std::shared_ptr<const StorageChart> longChart() {
    auto chart = std::make_shared<StorageChart>();
    for (std::size_t i = 0; i < captures; ++i) {
        const Date at{static_cast<double>(i) * 1800};
        if (i % 60 == 0) {
            if (i > 0)
                chart->gaps.push_back({at + -1800.0, at, "30 minutes without a size"});
            chart->lines.push_back({.first = i, .count = 0});
        }
        ++chart->lines.back().count;
        chart->points.push_back(
            {.at = at, .bytes = static_cast<std::int64_t>(i * 7'919 % 1'000) * 100'000'000});
        if (i % 3 == 0)
            chart->marks.push_back({Shared(Event()), "Something Grew in Size"});
    }
    chart->through = chart->points.back().at;
    chart->most = 100'000'000'000;
    return chart;
}

void measureChart() {
    StorageChartView view;
    view.resize(1000, 400);
    view.present(longChart());
    view.setCursor(300);
    view.show();
    QApplication::processEvents();
    bench::row("chart of 720 captures drawn, median",
               1000
                   * bench::medianOf(runs, [&] { return bench::seconds([&] { view.repaint(); }); }),
               "ms", 10);
    bench::row("  of it on the processor, median",
               1000
                   * bench::medianOf(runs,
                                     [&] {
                                         const double start = bench::processorSeconds();
                                         view.repaint();
                                         return bench::processorSeconds() - start;
                                     }),
               "ms");
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    measureMap();
    measureChart();
}
