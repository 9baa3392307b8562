#include "views/workspace/WorkspaceWindow.h"

#include "tests/app/support/ModelFixture.h"
#include "tests/support/SharedRecords.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

using namespace tidemark;

namespace {

/// The window over a controller with a real journal.
struct Workspace : test::ModelFixture {
    Workspace()
        : memory({.url = data / "memory-history.json",
                  .preferences = preferences,
                  .workspaceCenter = workspace}),
          viewSettings(preferences) {}

    /// Without folders, each capture lacks the places that nobody allowed.
    void allowFolders() {
        const auto purposes = [](const auto&) {
            return FolderPurposes{FolderPurpose::applications, FolderPurpose::launchAgents};
        };
        test::await(model->folderAccess().add({folder.makeFolder("places")}, purposes));
    }
    void open() {
        window.emplace(
            WorkspaceWindow::Uses{*model, memory, viewSettings, preferences, sources, tasks});
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
            if (each->accessibleName() == QLatin1String(accessibleName))
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

    MemoryHistoryService memory;
    ViewSettings viewSettings;
    const SettingSources sources{{}};
    TaskScope tasks;
    std::optional<WorkspaceWindow> window;
};

} // namespace

TEST_F(Workspace, ShowsWhatIsRecordedAndInspectsWhatIsChosen) {
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

TEST_F(Workspace, PausesAndResumes) {
    start();
    open();
    for (const char* label : {"Pause", "Resume", "Pause"}) {
        SCOPED_TRACE(label);
        const bool wasRecording = state().canRecord();
        for (auto* action : window->findChildren<QAction*>())
            if (action->text() == QLatin1String(label)) {
                action->trigger();
                break;
            }
        test::settle();
        EXPECT_NE(state().canRecord(), wasRecording);
    }
}

TEST_F(Workspace, NamesWhatTakesTheKeyboard) {
    start();
    open();
    for (auto* widget : window->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()
            || !(widget->focusPolicy() & Qt::TabFocus))
            continue;
        const auto* interface = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(interface, nullptr);
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className();
    }
}
