#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/HistoryImport.h"

namespace tidemark {

/// The commands around choosing folders: no capture runs while the user chooses, and one follows
/// a choice that changed anything.
class FolderSetup {
public:
    /// All of these outlive this.
    FolderSetup(ModelState& state, CaptureFlow& flow, HistoryImport& imports, FolderAccess& folders,
                Preferences& preferences, const TaskScope& tasks)
        : state(state), flow(flow), imports(imports), folders(folders), preferences(preferences),
          tasks(tasks) {}

    /// Shows the folder manager, since the user has to choose.
    void present();
    /// The user begins to change folders, and is done.
    void begin();
    QCoro::Task<void> finish();
    /// Closes without having finished a first choice.
    void cancel();
    /// Finishes the choice; nothing follows by itself.
    void complete();
    /// Looks which recommended folders can be read by now.
    QCoro::Task<void> checkRecommendedAccess(FolderAccess::Check check = {});
    /// Shows where the user may grant access to the whole disk; the check follows when they return.
    /// `open` shows one location and says whether it could.
    void openDiskAccessPane(const std::function<bool(const std::string& location)>& open);
    /// The user is back, perhaps from the system's own settings of access.
    QCoro::Task<void> resumeOnActivation(FolderAccess::Check check = {});

private:
    QCoro::Task<void> check(FolderAccess::Check check);

    ModelState& state;
    CaptureFlow& flow;
    HistoryImport& imports;
    FolderAccess& folders;
    Preferences& preferences;
    const TaskScope& tasks;
    std::optional<std::map<std::string, FolderPurposes>> selectionAtOpen;
    std::optional<Operations::Token> choosing;
    std::optional<Operations::Token> managing;
};

} // namespace tidemark
