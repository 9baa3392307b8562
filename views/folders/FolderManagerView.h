#pragma once

#include "app/base/TaskScope.h"
#include "app/model/AppModel.h"
#include "app/settings/FolderManagerPage.h"

#include <QPointer>
#include <QWidget>
#include <filesystem>
#include <set>

class QLabel;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace tidemark {

class DeveloperSuggestionsView;
class MonitoredFolderRow;

/// The page on which the user chooses the folders that are observed; also the first set-up.
class FolderManagerView : public QWidget {
    Q_OBJECT

public:
    /// `controller` and `scope` must outlive the view.
    FolderManagerView(AppModel& controller, TaskScope& scope, QWidget* parent = nullptr);

    /// Begins the choice, and shows the folders as they are.
    void begin(bool isFirstSetup);

private:
    /// Facts that are read from the disk, in the background, each time the page is opened.
    struct Places {
        /// See `FolderManagerState`.
        std::vector<std::string> recommended;
        /// The suggested folders that exist.
        std::set<std::filesystem::path> existing;
    };

    /// Folders that the user wants to have observed.
    struct Wanted {
        std::vector<std::filesystem::path> folders;
        FolderPurposes purposes;
        std::string title;
    };

    static QCoro::Task<void> allow(QPointer<FolderManagerView> view, Wanted wanted);
    static QCoro::Task<void> lookUp(QPointer<FolderManagerView> view, TaskScope& tasks);
    QWidget* page();
    QWidget* foot();
    void refresh();
    void fillRows(const FolderManagerPage& page);
    void addRow();
    void monitor(const FolderManagerPage::Row& row);
    void addFolder(const std::filesystem::path& folder, const std::string& title);
    void monitorSuggested(const std::vector<std::filesystem::path>& folders);
    void stopMonitoring(const FolderManagerPage::Row& row);
    void addFolders();

    AppModel& model;
    TaskScope& tasks;
    bool isFirst = false;
    Places places;
    /// The title of the folder whose access is being checked, which takes long on a slow server.
    std::optional<std::string> currentFolder;
    /// Why a folder could not be added.
    std::string failure;
    QLabel* heading;
    QLabel* message;
    QLabel* later;
    QVBoxLayout* rows;
    std::vector<MonitoredFolderRow*> shownRows;
    QPushButton* adding;
    DeveloperSuggestionsView* suggestions;
    QScrollArea* area;
};

} // namespace tidemark
