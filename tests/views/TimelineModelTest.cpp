#include "tests/support/HistoryEvents.h"
#include "views/workspace/TimelineView.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <random>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

TimelinePresentation presentationOf(std::vector<Shared<Event>> events) {
    return TimelinePresentation::build(TimelinePresentation::newestFirst(std::move(events)),
                                       Date::distantPast(), Date::distantFuture(), {}, {}, "",
                                       Calendar());
}

std::vector<Shared<Event>> history(int count) {
    std::vector<Shared<Event>> events;
    for (int i = 0; i < count; ++i)
        events.emplace_back(test::event("event " + std::to_string(i), 20'000.0 * i));
    return events;
}

QStringList rowsOf(const QAbstractItemModel& model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows += model.index(row, 0).data().toString();
    return rows;
}

} // namespace

TEST(TimelineModel, HasTheRowsOfAFreshModelAfterAnyChange) {
    TimelineModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::minstd_rand random(1);
    const auto all = history(30);
    for (int round = 0; round < 200; ++round) {
        std::vector<Shared<Event>> some;
        for (const auto& event : all)
            if (random() % 4 != 0)
                some.push_back(event);
        const auto presentation = presentationOf(some);
        TimelineModel fresh;
        fresh.show(presentation, Date{0});
        model.show(presentation, Date{0});
        ASSERT_EQ(rowsOf(model), rowsOf(fresh));
    }
}

TEST(TimelineModel, InsertsOnlyTheRowsOfANewEvent) {
    TimelineModel model;
    auto events = history(10);
    model.show(presentationOf(events), Date{0});
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy added(&model, &QAbstractItemModel::rowsInserted);
    events.emplace_back(test::event("new", 20'000.0 * 9 + 1));
    model.show(presentationOf(events), Date{0});
    EXPECT_EQ(removed.count(), 0);
    ASSERT_EQ(added.count(), 1);
    EXPECT_EQ(added.first().at(1), added.first().at(2));
}

TEST(TimelineView, KeepsWhatIsBeingReadInPlace) {
    TimelineView view;
    view.resize(400, 300);
    view.show();
    auto events = history(200);
    view.present(presentationOf(events), Date{0});
    QCoreApplication::processEvents();
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() / 2);
    const QPersistentModelIndex top = view.indexAt({1, 1});
    const int place = view.visualRect(top).top();
    for (int i = 0; i < 3; ++i)
        events.emplace_back(test::event("new " + std::to_string(i), 20'000.0 * (300 + i)));
    view.present(presentationOf(events), Date{0});
    EXPECT_EQ(view.visualRect(top).top(), place);

    view.verticalScrollBar()->setValue(0);
    events.emplace_back(test::event("newest", 20'000.0 * 400));
    view.present(presentationOf(events), Date{0});
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
}

TEST(TimelineView, FoldsAndUnfoldsGapsByKeyAndMouse) {
    TimelineView view;
    view.resize(400, 600);
    view.show();
    const auto events = history(3);
    std::vector<GapRow> gaps;
    for (int i = 4; i > 0; --i) {
        GapRow& gap = gaps.emplace_back();
        gap.start = Date{40'000.0 + 1'000 * i};
        gap.end = Date{40'500.0 + 1'000 * i};
    }
    const auto present = [&] { view.present(presentationOf(events), Date{0}, gaps); };
    present();
    QObject::connect(&view, &TimelineView::gapsToggled, present);
    const auto rowsOfKind = [&](TimelineModel::RowKind kind) {
        std::vector<QModelIndex> found;
        for (int row = 0; row < view.model()->rowCount(); ++row)
            if (const auto index = view.model()->index(row, 0);
                TimelineModel::kindOf(index) == kind)
                found.push_back(index);
        return found;
    };
    using Kind = TimelineModel::RowKind;
    const auto isFolded = [&] {
        view.doItemsLayout();
        return rowsOfKind(Kind::gaps).size() == 1 && rowsOfKind(Kind::gap).empty();
    };
    const auto middleOf = [&](Kind kind) {
        return view.visualRect(rowsOfKind(kind).at(0)).center();
    };
    const auto press = [&](Qt::Key key, Kind kind) {
        view.setCurrentIndex(rowsOfKind(kind).at(0));
        QTest::keyClick(&view, key);
    };
    const auto click = [&] {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, middleOf(Kind::gaps));
    };
    const auto doubleClick = [&](Kind kind) {
        const QPoint at = middleOf(kind);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, at);
    };
    ASSERT_TRUE(isFolded());
    press(Qt::Key_Space, Kind::gaps);
    EXPECT_EQ(rowsOfKind(Kind::gap).size(), gaps.size());
    press(Qt::Key_Return, Kind::gap);
    EXPECT_TRUE(isFolded());
    click();
    EXPECT_FALSE(isFolded());
    doubleClick(Kind::gap);
    EXPECT_TRUE(isFolded());
    doubleClick(Kind::gaps);
    EXPECT_FALSE(isFolded()) << "the first click has unfolded them";
}

TEST(TimelineView, ReportsOnlyWhatTheUserChose) {
    TimelineView view;
    auto events = history(5);
    view.present(presentationOf(events), Date{0});
    QSignalSpy chosen(&view, &TimelineView::eventChosen);
    const std::string id = "event 2";
    view.select(&id);
    events.erase(events.begin() + 2);
    view.present(presentationOf(events), Date{0});
    EXPECT_EQ(chosen.count(), 0);
    view.selectionModel()->setCurrentIndex(view.model()->index(2, 0),
                                           QItemSelectionModel::NoUpdate);
    EXPECT_EQ(chosen.count(), 0) << "a list that gets the keyboard has a current row";
    view.setCurrentIndex(view.model()->index(1, 0));
    EXPECT_EQ(chosen.count(), 1);
}
