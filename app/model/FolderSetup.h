#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/HistoryImport.h"

namespace tidemark {

/// The commands for choosing folders. No scheduled capture begins while the user chooses. If any
/// folder is allowed, a capture follows the first choice, and each later one that changed what is
/// tracked.
class FolderSetup {
public:
    /// The arguments must outlive this object.
    FolderSetup(ModelState& state, CaptureFlow& flow, HistoryImport& imports, FolderAccess& folders,
                Preferences& preferences, const TaskScope& tasks)
        : state(state), flow(flow), imports(imports), folders(folders), preferences(preferences),
          tasks(tasks) {}

    /// Shows the folder manager because the user has to choose.
    void present();
    /// The user begins to change folders.
    void begin();
    /// Completes the choice. The first import and a capture follow where they are due.
    QCoro::Task<void> finish();
    /// Closes the folder manager without completing a first choice.
    void cancel();
    /// Completes the choice without a capture.
    void complete();
    /// Checks the recommended folders and allows those that can be read. Does nothing while an
    /// operation runs that excludes the check (`exclusions`).
    QCoro::Task<void> checkRecommendedAccess(FolderAccess::Check check = {});
    /// Opens the system's settings where the user can allow access to the whole disk; the check
    /// follows when the user returns. `open` opens one location and returns whether it succeeded.
    void openDiskAccessPane(const std::function<bool(const std::string& location)>& open);
    /// Called when the user returns to the program, perhaps from the system's settings.
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
