#pragma once

#include "app/base/TaskScope.h"
#include "app/memory/ClipboardHistory.h"
#include "app/memory/FileCollector.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/search/SearchShortcut.h"
#include "app/settings/LoginLaunchController.h"
#include "app/settings/SettingsPage.h"
#include "app/settings/ViewSettings.h"

#include <QScrollArea>
#include <QTimer>
#include <functional>

class QVBoxLayout;

namespace tidemark {

class SettingsRowView;

/// All settings on one page, in a window of its own. It lays out `settingsPage`; every control
/// applies at once.
class SettingsView : public QScrollArea {
    Q_OBJECT

public:
    /// What the references and pointers refer to outlives the view.
    struct Uses {
        AppModel& model;
        MemoryHistoryService& memory;
        FileCollector& files;
        ClipboardHistory& clipboard;
        Preferences& preferences;
        ViewSettings& viewSettings;
        /// Returns the sources that are available at the moment.
        std::function<SettingSources()> sources;
        SearchShortcut& shortcut;
        /// Null where the program can't be started at login.
        LoginLaunchController* login;
        /// What the commands run in.
        TaskScope& tasks;
    };

    explicit SettingsView(const Uses& used);

Q_SIGNALS:
    void foldersRequested();
    void searchRequested();
    void importRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void followModel();
    std::vector<SettingsSection> pageNow() const;
    void refresh();
    void build(const std::vector<SettingsSection>& page);
    void connectRow(SettingsRowView& row);
    void carryOut(const SettingsRow& row);
    void store(std::string_view key, const PreferenceValue& value);
    void addConfigurationFiles();
    void removeConfigurationFile(const std::string& path);
    void includeFolder();
    void clearClipboard();
    void report(const QString& failure);

    const Uses uses;
    /// Combines all changes of one turn of the event loop in one refresh.
    QTimer refreshing;
    QVBoxLayout* column;
    std::vector<SettingsRowView*> rows;
    /// The headings and rows of the page, without texts and values of rows (`shapeOf`).
    std::vector<std::string> shape;
};

} // namespace tidemark
