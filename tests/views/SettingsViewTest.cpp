#include "views/settings/SettingsView.h"

#include "app/preferences/PreferenceKeys.h"
#include "tests/app/support/ModelFixture.h"
#include "tests/views/AccessibleNames.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace tidemark;

namespace {

struct Settings : test::ModelFixture {
    Settings()
        : memory({.url = data / "memory-history.json",
                  .preferences = preferences,
                  .workspaceCenter = workspace}),
          viewSettings(preferences),
          shortcut([](const GlobalShortcut::Observer&) { return nullptr; }) {}

    void open() {
        start();
        view.emplace(SettingsView::Uses{*model, memory, files, clipboard, preferences, viewSettings,
                                        [this] { return sources; }, shortcut, nullptr, tasks});
        view->show();
        test::settle();
    }
    template <class Widget>
    Widget& named(const char* text) {
        for (auto* each : view->findChildren<Widget*>()) {
            const auto* interface = QAccessible::queryAccessibleInterface(each);
            // For a combo box, Qt may have the chosen entry as the accessible name.
            if (each->accessibleName() == QString::fromUtf8(text)
                || interface->text(QAccessible::Name) == QString::fromUtf8(text))
                return *each;
        }
        throw std::runtime_error(text);
    }
    bool shows(const char* text) {
        for (auto* label : view->findChildren<QLabel*>())
            if (label->isVisibleTo(&*view) && label->text().contains(QString::fromUtf8(text)))
                return true;
        return false;
    }

    FileCollector files{{.preferences = preferences, .index = nullptr}};
    ClipboardHistory clipboard{preferences, nullptr};
    MemoryHistoryService memory;
    ViewSettings viewSettings;
    SearchShortcut shortcut;
    SettingSources sources{{SettingSource::network, SettingSource::windows,
                            SettingSource::recentFiles, SettingSource::clipboard}};
    TaskScope tasks;
    std::optional<SettingsView> view;
};

} // namespace

TEST_F(Settings, ApplyAtOnceAndFollowWhatOthersChange) {
    open();
    auto& network = named<QCheckBox>("Network connection changes");
    ASSERT_TRUE(network.isChecked());
    network.click();
    test::settle();
    EXPECT_FALSE(read(preferences, preferenceKeys::networkHistoryEnabled));
    EXPECT_FALSE(network.isChecked());
    preferences.set(preferenceKeys::networkHistoryEnabled.name, true);
    test::settle();
    EXPECT_TRUE(network.isChecked());

    EXPECT_TRUE(shows("Next capture due"));
    auto& schedule = named<QComboBox>("Automatic captures");
    schedule.setCurrentIndex(schedule.findData(QStringLiteral("manual")));
    Q_EMIT schedule.activated(schedule.currentIndex());
    test::settle();
    EXPECT_TRUE(shows("Use Check Now to capture manually."));
    EXPECT_FALSE(shows("Next capture due"));
    // The row was replaced by a new one with a new combo box, which has to be found again.
    EXPECT_EQ(named<QComboBox>("Automatic captures").currentData(), QStringLiteral("manual"));

    named<QPushButton>("Pause recording").click();
    test::settle();
    EXPECT_FALSE(state().canRecord());
    EXPECT_NO_THROW(named<QPushButton>("Resume recording"));
}

TEST_F(Settings, SayWhyAControlCantWork) {
    open();
    EXPECT_FALSE(named<QCheckBox>("Bluetooth activity").isEnabled());
    EXPECT_TRUE(shows("This release can’t follow Bluetooth on this system."));
    EXPECT_FALSE(shows("Full Disk Access"));
    EXPECT_FALSE(shows("Login"));
    EXPECT_EQ(test::namelessIn(*view), "");

    // The user starts the service in another program, and comes back.
    sources = SettingSources({SettingSource::bluetooth});
    QEvent comesBack(QEvent::ActivationChange);
    QApplication::sendEvent(&*view, &comesBack);
    test::settle();
    EXPECT_TRUE(named<QCheckBox>("Bluetooth activity").isEnabled());
}

TEST_F(Settings, ChooseTheFoldersOfTheFileHistory) {
    open();
    named<QCheckBox>("Files outside of the chosen folders, too").click();
    test::settle();
    const auto chosen = folder.makeFolder("chosen");
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->selectFile(QString::fromStdString(chosen.native()));
        for (auto* button : dialog->findChildren<QPushButton*>())
            if (button->text().remove(u'&') == QStringLiteral("Include Folder"))
                return button->click();
    });
    named<QPushButton>("Include Folder…").click();
    test::until([&] { return read(preferences, preferenceKeys::memoryFolders).size() == 4; });
    test::settle();
    EXPECT_EQ(read(preferences, preferenceKeys::memoryFolders).back(), chosen.native());
    named<QPushButton>(("Remove \u2068" + chosen.native() + "\u2069").c_str()).click();
    test::settle();
    EXPECT_EQ(read(preferences, preferenceKeys::memoryFolders).size(), 3);
}

TEST_F(Settings, SayWhatIsRecordedOfTheClipboard) {
    open();
    EXPECT_FALSE(shows("Observation paused"));
    preferences.set(preferenceKeys::memoryClipboard.name, true);
    clipboard.stop();
    test::settle();
    EXPECT_TRUE(shows("Observation paused"));
}
