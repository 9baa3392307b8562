#include "tests/app/support/Await.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/HistoryEvents.h"
#include "tests/views/AccessibleNames.h"
#include "views/search/SearchPanelView.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace tidemark;

namespace {

struct Panel : testing::Test {
    Panel() {
        std::vector<Shared<Event>> events;
        for (int i = 0; i < 60; ++i)
            events.emplace_back(test::event("event " + std::to_string(i), 1'000.0 * i));
        history = std::make_shared<const MergedHistory>(MergedHistory::of(std::move(events)));
    }
    void open() {
        panel.open();
        test::until([&] { return rows() > 0; });
    }
    int rows() const { return list->model()->rowCount(); }
    QString selected() const { return list->currentIndex().data().toString(); }

    test::MemoryPreferences preferences;
    ViewSettings settings{preferences};
    std::shared_ptr<const MergedHistory> history;
    SearchPanelView panel{[this] { return history; }, settings};
    QLineEdit* field = panel.findChild<QLineEdit*>();
    QAbstractItemView* list = panel.findChild<QAbstractItemView*>();
    QAbstractItemModelTester tester{list->model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(Panel, KeepsTheKeyboardInTheField) {
    open();
    EXPECT_EQ(rows(), 40);
    EXPECT_EQ(test::namelessIn(panel), "");
    const QString first = selected();
    QTest::keyClick(field, Qt::Key_Down);
    test::until([&] { return selected() != first; });
    const QString second = selected();
    // Typed at the list.
    QTest::keyClicks(list, "event 7");
    EXPECT_EQ(field->text(), QStringLiteral("event 7"));
    test::until([&] { return rows() == 1; });
    EXPECT_NE(selected(), second);

    QSignalSpy chosen(&panel, &SearchPanelView::eventChosen);
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.first().first().value<Shared<Event>>()->id, "event 7");
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(Panel, IsClosedAndDestroyedWhileASearchRuns) {
    panel.open();
    panel.close();
    open();
    EXPECT_EQ(rows(), 40);
    panel.open();
    panel.close();
}

TEST_F(Panel, OpensWithAnEmptyQuery) {
    open();
    QTest::keyClicks(field, "no such thing");
    test::until([&] {
        for (auto* label : panel.findChildren<QLabel*>())
            if (label->isVisible() && label->text() == QStringLiteral("No matching history"))
                return true;
        return false;
    });
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
    test::settle();
    open();
    EXPECT_EQ(field->text(), QString());
    panel.open();
    test::until([&] { return rows() == 40; });
}
