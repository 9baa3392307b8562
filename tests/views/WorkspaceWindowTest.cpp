#include "views/workspace/WorkspaceWindow.h"

#include "tests/app/support/ModelFixture.h"
#include "tests/support/SharedRecords.h"
#include "tests/views/AccessibleNames.h"
#include "views/base/ShownText.h"
#include "views/dialogs/CoverageDialog.h"
#include "views/dialogs/ExportDialog.h"
#include "views/dialogs/SaveSnapshotDialog.h"
#include "views/folders/FolderSizeModel.h"
#include "views/workspace/DigestCardView.h"
#include "views/workspace/SidebarDelegate.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <fstream>

using namespace tidemark;

namespace {

struct WrittenClipboard final : Clipboard {
    void watch(std::string, Copied, AccessChanged) override {}
    void unwatch() override {}
    bool put(std::vector<ClipData> put) override {
        contents = std::move(put);
        return true;
    }

    std::vector<ClipData> contents;
};

/// The window of a model with a real journal.
struct Workspace : test::ModelFixture {
    Workspace()
        : memory({.url = data / "memory-history.json",
                  .preferences = preferences,
                  .workspaceCenter = workspace}),
          viewSettings(preferences) {}

    /// Allows a folder for applications and background items, so that a capture reads them.
    void allowFolders() {
        const auto purposes = [](const auto&) {
            return FolderPurposes{FolderPurpose::applications, FolderPurpose::launchAgents};
        };
        test::await(model->folderAccess().add({folder.makeFolder("places")}, purposes));
    }
    void open() {
        window.emplace(WorkspaceWindow::Uses{*model, memory, clipboard, viewSettings, preferences,
                                             [this] { return sources; }, tasks});
        using Mode = QAbstractItemModelTester::FailureReportingMode;
        // A table of sizes opens rows as soon as its model was reset, before the tester hears of
        // it.
        for (auto* view : window->findChildren<QAbstractItemView*>())
            if (!qobject_cast<FolderSizeModel*>(view->model()))
                new QAbstractItemModelTester(view->model(), Mode::Fatal, view);
        window->show();
        test::settle();
    }
    /// A capture that finds `names`.
    void capture(std::initializer_list<const char*> names) {
        applications.clear();
        for (const char* name : names)
            applications.emplace_back(test::application(name));
        clock.advance(60);
        test::await(model->scan());
        test::settle();
    }
    template <class Widget>
    Widget& child(const char* accessibleName) {
        for (auto* each : window->findChildren<Widget*>())
            if (each->accessibleName() == QString::fromUtf8(accessibleName))
                return *each;
        throw std::runtime_error(accessibleName);
    }
    testing::AssertionResult shows(const char* text) {
        std::string others;
        for (auto* label : window->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().contains(QString::fromUtf8(text)))
                return testing::AssertionSuccess();
            if (label->isVisible())
                others += "\n  " + label->text().toStdString();
        }
        return testing::AssertionFailure() << text << " is not among" << others;
    }

    std::unique_ptr<WrittenClipboard> made = std::make_unique<WrittenClipboard>();
    WrittenClipboard& written = *made;
    ClipboardHistory clipboard{preferences, std::move(made)};
    MemoryHistoryService memory;
    ViewSettings viewSettings;
    const SettingSources sources{{}};
    TaskScope tasks;
    std::optional<WorkspaceWindow> window;
};

} // namespace

TEST_F(Workspace, ShowsEventsAndDetailsOfTheSelectedOne) {
    allowFolders();
    start();
    open();
    EXPECT_TRUE(shows("Starting Point Saved"));
    capture({"Pen"});
    auto& list = child<QListView>("Events");
    ASSERT_EQ(list.model()->rowCount(), 2);
    EXPECT_TRUE(shows("1 event · observed history"));
    EXPECT_TRUE(shows("Select an event to inspect"));
    list.setCurrentIndex(list.model()->index(1, 0));
    test::settle();
    EXPECT_TRUE(shows("Observation interval"));

    child<QLineEdit>("Search").setText("nothing like it");
    test::settle();
    EXPECT_TRUE(shows("No Matching Changes Recorded"));
    child<QLineEdit>("Search").clear();
    fails = true;
    test::await(model->scan());
    test::settle();
    EXPECT_TRUE(shows("Tidemark needs your attention"));
}

TEST_F(Workspace, ScrollsToAnEventThatIsOpenedAgain) {
    allowFolders();
    start();
    open();
    for (int i = 0; i < 20; ++i)
        capture({i % 2 == 0 ? "Pen" : "Ink"});
    auto& list = child<QListView>("Events");
    const auto newest = model->history().presentation().events.front();
    for (int i = 0; i < 2; ++i) {
        model->history().openEvent(newest);
        test::settle();
        EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.currentIndex()))) << i;
        list.scrollToBottom();
        EXPECT_FALSE(list.viewport()->rect().intersects(list.visualRect(list.currentIndex()))) << i;
    }
}

TEST_F(Workspace, PausesAndResumes) {
    start();
    open();
    for (const char* label : {"Pause", "Resume", "Pause"}) {
        SCOPED_TRACE(label);
        const bool wasRecording = state().canRecord();
        for (auto* action : window->findChildren<QAction*>())
            if (action->iconText() == QLatin1String(label)) {
                action->trigger();
                break;
            }
        test::settle();
        EXPECT_NE(state().canRecord(), wasRecording);
    }
}

TEST_F(Workspace, CopiesAClipAgainAndPinsIt) {
    start();
    test::await(memory.load());
    auto clip = MemoryRecord::make(MemoryRecord::Kind::clipboard, Date::now(), "words");
    clip.text = "words";
    memory.update({clip});
    auto& history = model->history();
    QObject::connect(&memory, &Observable::changed, &history,
                     [&] { history.setMemory(memory.archive()); });
    history.setMemory(memory.archive());
    open();
    history.openEvent(history.history()->events.at(0));
    const auto press = [&](const char* label) {
        test::settle();
        for (auto* button : window->findChildren<QPushButton*>())
            if (button->isVisible() && button->text() == QLatin1String(label))
                return button->click();
        ADD_FAILURE() << label;
    };
    press("Copy Again");
    ASSERT_FALSE(written.contents.empty());
    EXPECT_EQ(written.contents[0].bytes, "words");
    press("Pin");
    EXPECT_TRUE(memory.clips().at(0)->pinned);
    press("Unpin");
    EXPECT_FALSE(memory.clips().at(0)->pinned);
}

TEST_F(Workspace, KeepsNothingOfACancelledCapture) {
    allowFolders();
    start();
    open();
    holdCapture();
    test::settle();
    ASSERT_TRUE(shows("Observing"));
    for (auto* button : window->findChildren<QPushButton*>())
        if (button->isVisible() && button->text() == "Cancel")
            button->click();
    finish();
    EXPECT_EQ(snapshots(), 1U);
    EXPECT_EQ(error(), "none");
    EXPECT_TRUE(shows("History is stored locally."));
    captureDuration = 0;
    capture({"Pen"});
    EXPECT_EQ(snapshots(), 2U) << "the next capture is kept";
}

TEST_F(Workspace, DeletesASnapshotOnlyAfterAConfirmation) {
    allowFolders();
    start();
    open();
    Journal named = *state().journal();
    named.baselines.push_back(Baseline::named("Before", named.snapshots.back()));
    test::await(model->commit(std::move(named)));
    model->history().navigate(WorkspaceDestination::snapshots, true);
    test::settle();
    EXPECT_TRUE(shows("A reference point for your computer"));
    model->history().openSnapshot(state().journal()->baselines.front().id);
    test::settle();
    for (const char* answer : {"Cancel", "Delete Snapshot"}) {
        EXPECT_EQ(state().journal()->baselines.size(), 1U);
        QTimer::singleShot(0, [answer] {
            for (auto* button : QApplication::activeModalWidget()->findChildren<QPushButton*>())
                if (button->text().remove(u'&') == QLatin1String(answer))
                    return button->click();
        });
        child<QToolButton>("Delete Snapshot…").click();
        finish();
    }
    EXPECT_TRUE(state().journal()->baselines.empty());
}

TEST_F(Workspace, ShowsTheSizesOfAnEventAndThoseOfAllFolders) {
    allowFolders();
    start();
    open();
    clock.advance(300);
    Journal grown = *state().journal();
    for (const std::int64_t bytes :
         std::initializer_list<std::int64_t>{1'000'000'000, 9'000'000'000}) {
        Snapshot next = *grown.snapshots.back();
        next.id = Uuid::random();
        next.timestamp = next.timestamp + 60;
        next.folders = {Shared(test::folder("/home/ada/Projects", bytes, {{"target", bytes}}))};
        grown.append(Shared(std::move(next)), true);
    }
    test::await(model->commit(std::move(grown)));
    test::settle();
    auto& list = child<QListView>("Events");
    list.setCurrentIndex(list.model()->index(1, 0));
    test::settle();
    EXPECT_TRUE(shows("Where the Size Changed"));
    for (auto* button : window->findChildren<QPushButton*>())
        if (button->text() == "Inspect Folder Sizes") {
            button->click();
            break;
        }
    test::settle();
    EXPECT_TRUE(shows("Folder Sizes"));
    EXPECT_EQ(child<QComboBox>("Folders that are shown").currentText(),
              "This event’s measurements");
    const auto& sizes = *child<QTreeView>("Folder Sizes").model();
    EXPECT_EQ(sizes.headerData(2, Qt::Horizontal).toString(), "After");
    EXPECT_EQ(sizes.index(0, 3).data().toString(), "+8 GB");
}

TEST_F(Workspace, FiltersTheTimelineByAButtonOfAPlaceAndByAKey) {
    start();
    open();
    auto& list = child<QListView>("Places");
    QModelIndex storage;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        if (list.model()->index(row, 0).data().toString() == "Storage")
            storage = list.model()->index(row, 0);
    ASSERT_TRUE(storage.isValid());
    const auto filters = [&] { return model->history().place().systemFilters().size(); };
    const QRect button = SidebarDelegate::toggleArea(list.visualRect(storage), Qt::LeftToRight);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, button.center());
    EXPECT_EQ(filters(), 1U);
    test::settle();
    ASSERT_EQ(list.currentIndex(), storage);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(filters(), 0U);
}

TEST_F(Workspace, MovesBetweenThePanes) {
    start();
    capture({"Pen"});
    open();
    window->activateWindow();
    QStringList visited;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&*window, Qt::Key_F6);
        visited +=
            QApplication::focusWidget() ? QApplication::focusWidget()->accessibleName() : QString();
    }
    EXPECT_EQ(visited.join(u' ').toStdString(), "About this event Places Events");
}

TEST_F(Workspace, FocusesTheEventsWhenTheFoldersAreClosed) {
    start();
    capture({"Pen"});
    open();
    window->manageFolders();
    test::settle();
    test::await(model->finishFolderManagement());
    test::settle();
    EXPECT_EQ(window->focusWidget(), &child<QListView>("Events"));
}

TEST_F(Workspace, ReportsAnUnreadableHistoryInsteadOfAnEmptyOne) {
    folder.write("Tidemark/journal.json", "{\"schemaVersion\": 1, \"snap");
    start();
    open();
    EXPECT_TRUE(shows("The History Couldn’t Be Read"));
    EXPECT_TRUE(shows("Tidemark needs your attention"));
    EXPECT_FALSE(shows("Your Computer’s Story Starts Here"));
    EXPECT_FALSE(shows("0 events"));
    for (auto* button : window->findChildren<QToolButton*>())
        EXPECT_FALSE(button->isEnabled() && button->text() == "Save snapshot");

    std::filesystem::remove(data / "journal.json");
    for (auto* button : window->findChildren<QPushButton*>())
        if (button->isVisible() && button->text() == "Try Again") {
            button->click();
            break;
        }
    test::until([&] { return !shows("The History Couldn’t Be Read"); });
    EXPECT_FALSE(shows("Tidemark needs your attention"));
}

TEST_F(Workspace, KeepsTheSizeOfTheWindowAndOfItsColumns) {
    start();
    open();
    window->resize(1111, 700);
    window->findChild<QSplitter*>()->setSizes({300, 500, 311});
    test::settle();
    window->close();
    open();
    EXPECT_EQ(window->size(), QSize(1111, 700));
    EXPECT_NEAR(child<QListView>("Places").parentWidget()->width(), 300, 3);
}

TEST_F(Workspace, ShowsDetailsInPlaceOfTheSidebarWhereThereIsNoRoomForBoth) {
    allowFolders();
    start();
    open();
    capture({"Pen"});
    window->resize(640, 700);
    EXPECT_EQ(window->width(), 640);
    window->resize(900, 700);
    auto& places = child<QListView>("Places");
    auto& list = child<QListView>("Events");
    test::settle();
    EXPECT_TRUE(places.isVisible());
    list.setCurrentIndex(list.model()->index(1, 0));
    test::settle();
    EXPECT_TRUE(shows("Observation interval"));
    EXPECT_FALSE(places.isVisible());
    child<QToolButton>("Close details").click();
    test::settle();
    EXPECT_TRUE(places.isVisible());
}

TEST_F(Workspace, SurvivesHostileNames) {
    allowFolders();
    start();
    open();
    const std::string hostile =
        "\u202Eevil\u2069\n" + std::string(10'000, 'x') + "/" + std::string(300, 'y');
    capture({hostile.c_str()});
    auto& list = child<QListView>("Events");
    list.setCurrentIndex(list.model()->index(1, 0));
    test::settle();
    EXPECT_FALSE(list.model()->index(1, 0).data().toString().contains(u'\n'));
    EXPECT_FALSE(window->grab().isNull());
    EXPECT_LE(window->width(), 1400) << "no text makes the window wider";
    EXPECT_EQ(isolated(u"a\u2069\u202Eb"_qs), u"\u2068ab\u2069"_qs);
    EXPECT_EQ(shortened(u"a😀b"_qs, 2), u"a…"_qs);
    EXPECT_EQ(shortened(u"a😀b"_qs, 3), u"a😀…"_qs);
}

TEST_F(Workspace, NamesEveryControlForScreenReaders) {
    allowFolders();
    start();
    capture({"Pen"});
    open();
    capture({"Pen", "Ink"});
    child<QListView>("Events").setCurrentIndex(child<QListView>("Events").model()->index(1, 0));
    test::settle();
    EXPECT_EQ(test::namelessIn(*window), "");
    using enum WorkspaceDestination;
    for (const auto place : {folderSizes, storageOverTime, snapshots}) {
        model->history().navigate(place, true);
        test::settle();
        EXPECT_EQ(test::namelessIn(*window), "") << static_cast<int>(place);
    }
    window->manageFolders();
    test::settle();
    EXPECT_EQ(test::namelessIn(*window), "") << "the folders";
    SaveSnapshotDialog saving(*model, tasks, nullptr);
    saving.show();
    EXPECT_EQ(test::namelessIn(saving), "");
    CoverageDialog coverage({}, nullptr);
    coverage.show();
    EXPECT_EQ(test::namelessIn(coverage), "");
}

TEST_F(Workspace, GivesEveryMenuEntryItsOwnMnemonic) {
    start();
    open();
    for (const auto* menu : window->findChildren<QMenu*>()) {
        QString letters;
        for (const auto* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            const auto mark = action->text().indexOf(u'&');
            ASSERT_GE(mark, 0) << action->text().toStdString();
            const QChar letter = action->text().at(mark + 1).toUpper();
            EXPECT_FALSE(letters.contains(letter)) << action->text().toStdString();
            letters += letter;
        }
    }
}

TEST_F(Workspace, ShowsTheDifferencesOfTwoCapturesAndAButtonToGoBack) {
    allowFolders();
    start();
    open();
    capture({"Pen"});
    capture({"Pen", "Ink"});
    const auto& snapshots = state().journal()->snapshots;
    model->history().compareCaptures({{snapshots.front(), {}}, {snapshots.back(), {}}});
    finish();
    EXPECT_TRUE(shows("Compared Captures"));
    EXPECT_EQ(child<QListView>("Events").model()->rowCount(), 3) << "a heading and two programs";
    EXPECT_TRUE(child<QListView>("Events").isVisible());
    model->history().beginExport();
    ASSERT_TRUE(model->history().exportReport());
    const auto target = folder / "compared.csv";
    ExportDialog dialog(*model->history().exportReport(), tasks, nullptr,
                        [&](auto&&...) { return QString::fromStdString(target.native()); });
    dialog.show();
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    test::until([&] { return !dialog.isSaving(); });
    model->history().endExport();
    std::ifstream file(target);
    const std::string written{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(written.find("Pen Installed"), std::string::npos) << written;
    EXPECT_NE(written.find("Ink Installed"), std::string::npos) << written;
    for (auto* button : window->findChildren<QPushButton*>())
        if (button->isVisible() && button->text() == "Back to Storage Over Time") {
            button->click();
            break;
        }
    finish();
    EXPECT_TRUE(shows("Storage Over Time"));
    EXPECT_FALSE(model->history().comparedCaptures());
}

TEST_F(Workspace, ShowsADigestToAUserWhoComesBack) {
    allowFolders();
    start();
    open();
    capture({"Pen"});
    EXPECT_FALSE(shows("Since You Last Looked"));
    window->hide();
    clock.advance(2 * 86'400);
    capture({"Pen", "Ink"});
    window->show();
    finish();
    EXPECT_TRUE(shows("Since You Last Looked"));
    window->findChild<DigestCardView*>()->findChild<QToolButton*>()->click();
    finish();
    EXPECT_FALSE(shows("Since You Last Looked"));
}
