#include "tests/app/support/ModelFixture.h"
#include "views/folders/FolderManagerView.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>

using namespace tidemark;

namespace {

struct Folders : test::ModelFixture {
    void open() {
        folder.makeFolder("Downloads");
        start();
        view.emplace(*model, tasks);
        view->begin(true);
        view->show();
        view->activateWindow();
        test::settle();
    }
    QCheckBox& box(const char* name) const {
        for (auto* each : view->findChildren<QCheckBox*>())
            if (each->text() == QLatin1String(name))
                return *each;
        throw std::runtime_error(name);
    }

    TaskScope tasks;
    std::optional<FolderManagerView> view;
};

} // namespace

TEST_F(Folders, KeepTheFocusOnAFolderThatIsAllowedOrRemoved) {
    open();
    auto& downloads = box("Downloads");
    downloads.setFocus();
    QTest::keyClick(&downloads, Qt::Key_Space);
    test::until([&] { return downloads.isChecked(); });
    EXPECT_EQ(QApplication::focusWidget(), &downloads);
    EXPECT_EQ(model->folderAccess().grants().size(), 1U);
    EXPECT_TRUE(downloads.accessibleName().startsWith("Downloads, monitored, "));
}

TEST_F(Folders, AreReachedByTheTabKeyInTheOrderInWhichTheyStand) {
    open();
    QStringList visited;
    const QWidget* first = &box("Downloads");
    for (const QWidget* at = first; at != first || visited.isEmpty(); at = at->nextInFocusChain()) {
        const auto* button = qobject_cast<const QAbstractButton*>(at);
        if (button && button->isVisibleTo(&*view))
            visited += button->text();
    }
    const auto position = [&](const char* text) { return visited.indexOf(QLatin1String(text)); };
    EXPECT_EQ(position("Allow Folder"), 1);
    EXPECT_LT(position("Trash"), position("Add Additional Folders"));
    EXPECT_LT(position("Add Additional Folders"), position("Continue"));
}
