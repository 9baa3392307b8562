#include "views/storage/StorageChartView.h"

#include "tests/support/HistoryEvents.h"
#include "views/storage/StorageTableModel.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

constexpr double day = 86'400;

/// A week, with an event on the fourth day.
std::shared_ptr<const StorageChart> week() {
    auto chart = std::make_shared<StorageChart>();
    chart->subject.name = "Projects";
    for (int i = 0; i < 7; ++i)
        chart->points.push_back({.at = Date{i * day},
                                 .bytes = (i < 4 ? 1 : 3) * 1'000'000'000LL,
                                 .snapshot = Uuid::random()});
    chart->lines = {{.first = 0, .count = 7}};
    chart->through = Date{6 * day};
    chart->least = 1'000'000'000;
    chart->most = 3'000'000'000;
    chart->marks.push_back({Shared(test::event("grown", 4 * day)), "Projects Grew in Size"});
    return chart;
}

struct Chart {
    Chart() {
        view.resize(700, 300);
        view.present(week());
        view.show();
        view.setFocus();
        QCoreApplication::processEvents();
    }
    StorageChartView view;
};

} // namespace

TEST(StorageChartView, MovesByKeyboardAndReportsThePositionToScreenReaders) {
    Chart chart;
    auto* all = QAccessible::queryAccessibleInterface(&chart.view);
    ASSERT_TRUE(all);
    EXPECT_EQ(all->childCount(), 7);
    const struct {
        Qt::Key key;
        int point;
    } steps[] = {{Qt::Key_Home, 0}, {Qt::Key_Right, 1}, {Qt::Key_Left, 0}, {Qt::Key_Left, 0},
                 {Qt::Key_End, 6},  {Qt::Key_Left, 5},  {Qt::Key_Left, 4}};
    for (const auto& [key, point] : steps) {
        QTest::keyClick(&chart.view, key);
        EXPECT_EQ(chart.view.currentPart(), point);
    }
    ASSERT_TRUE(all->focusChild());
    EXPECT_TRUE(all->focusChild()->text(QAccessible::Name).startsWith("3 GB, Friday, 5 January"))
        << all->focusChild()->text(QAccessible::Name).toStdString();
}

TEST(StorageChartView, ChoosesAnEventByAClickAndByAKey) {
    Chart chart;
    std::vector<std::string> chosen;
    QObject::connect(&chart.view, &StorageChartView::eventChosen, &chart.view,
                     [&](const OptionalShared<Event>& event) { chosen.push_back(event->id); });
    const QPoint at = chart.view.partArea(4).center();
    QTest::mouseClick(&chart.view, Qt::LeftButton, {}, at + QPoint(3, 0));
    EXPECT_EQ(chosen, (std::vector<std::string>{"grown"}));
    EXPECT_EQ(chart.view.currentPart(), 4);
    QTest::mouseClick(&chart.view, Qt::LeftButton, {}, at + QPoint(30, 0));
    EXPECT_EQ(chosen.size(), 1U) << "beside it";
    QTest::keyClick(&chart.view, Qt::Key_Return);
    EXPECT_EQ(chosen.size(), 2U);
}

TEST(StorageChartView, IsMarkedByADoubleClickInThePlotOnly) {
    Chart chart;
    QSignalSpy marked(&chart.view, &StorageChartView::markRequested);
    const QPoint at = chart.view.partArea(4).center();
    QTest::mouseClick(&chart.view, Qt::LeftButton, {}, at);
    QTest::mouseDClick(&chart.view, Qt::LeftButton, {}, at);
    EXPECT_EQ(marked.count(), 1);
    QTest::mouseDClick(&chart.view, Qt::LeftButton, {}, QPoint(1, at.y()));
    EXPECT_EQ(marked.count(), 1) << "at the labels of the axis";
}

TEST(StorageChartView, ShowsCapturesWithinSecondsAsADot) {
    auto chart = std::make_shared<StorageChart>();
    const std::int64_t size = 1'000'000'000;
    for (const double at : {0.0, 3 * day, 3 * day + 10, 6 * day})
        chart->points.push_back({.at = Date{at}, .bytes = size, .snapshot = Uuid::random()});
    chart->lines = {{.first = 0, .count = 1}, {.first = 1, .count = 2}, {.first = 3, .count = 1}};
    chart->through = Date{6 * day};
    chart->least = chart->most = size;
    Chart shown;
    shown.view.present(chart);
    const QImage drawn = shown.view.grab().toImage();
    const QColor ink = shown.view.palette().color(QPalette::Active, QPalette::Highlight);
    const auto inked = [&](int part) {
        const QRect around = shown.view.partArea(part);
        int pixels = 0;
        for (int x = around.left(); x <= around.right(); ++x)
            for (int y = around.top(); y <= around.bottom(); ++y)
                pixels += drawn.pixelColor(x, y) == ink ? 1 : 0;
        return pixels;
    };
    EXPECT_GT(inked(0), 8) << "alone";
    EXPECT_GE(inked(1), inked(0)) << "with another one after seconds";
}

TEST(StorageChartView, DrawsWithoutWaitingForThreads) {
    const std::filesystem::path threads = "/proc/self/task";
    if (!std::filesystem::exists(threads))
        GTEST_SKIP() << "the threads of a process can't be counted here";
    Chart chart;
    chart.view.resize(700, 500);
    chart.view.setCursor(3);
    const auto count = [&] {
        return std::ranges::distance(std::filesystem::directory_iterator(threads),
                                     std::filesystem::directory_iterator());
    };
    // Ends the threads that other tests had started.
    QThreadPool::globalInstance()->waitForDone();
    const auto before = count();
    chart.view.repaint();
    EXPECT_EQ(count(), before);
}

TEST(ComparedMoments, KeepsTheTwoThatWereMarkedLast) {
    ComparedMoments moments;
    const ComparedMoments::Moment a{Uuid::random(), Date{1}};
    const ComparedMoments::Moment b{Uuid::random(), Date{2}};
    const ComparedMoments::Moment c{Uuid::random(), Date{0}};
    moments.toggle(a);
    EXPECT_FALSE(moments.isComplete());
    moments.toggle(b);
    moments.toggle(c);
    EXPECT_EQ(moments.earlier(), c);
    EXPECT_EQ(moments.later(), b);
    moments.toggle(b);
    EXPECT_EQ(moments.all(), std::vector{c});
}

TEST(StorageTableModel, HasARowForEachPointAndEventOfTheChart) {
    StorageTableModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto chart = week();
    model.show(chart);
    ASSERT_EQ(model.rowCount(), 8) << "seven sizes and an event";
    for (std::size_t point = 0; point < chart->points.size(); ++point)
        EXPECT_EQ(model.pointAt(model.indexOf(point)), point);
    EXPECT_EQ(model.index(0, StorageTableModel::size).data().toString(), "3 GB");
}
