#include "app/model/FolderSetup.h"

#include "app/preferences/PreferenceKeys.h"

#include <QScopeGuard>
#include <utility>

namespace tidemark {

namespace {

constexpr const char* privacyPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";
constexpr const char* systemSettings = "/System/Applications/System Settings.app";

} // namespace

void FolderSetup::begin() {
    if (!state.isManagingFolders)
        selectionAtOpen = services.folderAccess.selection();
    state.isManagingFolders = true;
}

void FolderSetup::cancel() {
    selectionAtOpen.reset();
    state.isManagingFolders = false;
}

void FolderSetup::complete() {
    cancel();
    services.folderAccess.completeSetup();
    state.folderManagerPresented = false;
}

QCoro::Task<void> FolderSetup::finish() {
    const auto hold = services.tasks.hold();
    auto& folders = services.folderAccess;
    const bool firstSetup =
        !read(services.preferences, preference::folderSetupCompleted) || !state.latest();
    const auto before = std::exchange(selectionAtOpen, std::nullopt);
    const bool selectionChanged = before && *before != folders.selection();
    complete();
    if (services.importInitialHistory && !state.isEnding)
        co_await services.importInitialHistory();
    if ((firstSetup || selectionChanged) && !folders.grants().empty())
        co_await flow.scan(false);
}

QCoro::Task<void> FolderSetup::checkRecommendedAccess(FolderAccess::Check check) {
    const auto hold = services.tasks.hold();
    if (state.isCheckingRecommendedAccess || state.isScanning || state.isSaving)
        co_return;
    state.isCheckingRecommendedAccess = true;
    const auto done = qScopeGuard([this] { state.isCheckingRecommendedAccess = false; });
    services.preferences.note(preference::diskAccessCheckRequested.name, false);
    co_await services.folderAccess.enableReadableRecommended(
        services.folderAccess.recommendedFolders(), check);
}

void FolderSetup::openDiskAccessPane(const std::function<bool(const std::string&)>& open) {
    services.preferences.note(preference::diskAccessSetupPending.name, true);
    services.preferences.note(preference::diskAccessCheckRequested.name, true);
    if (!open(privacyPane))
        open(systemSettings);
}

QCoro::Task<void> FolderSetup::resumeOnActivation(FolderAccess::Check check) {
    const auto hold = services.tasks.hold();
    if (!state.loaded || !read(services.preferences, preference::diskAccessCheckRequested)
        || state.isCheckingRecommendedAccess || state.isScanning || state.isSaving
        || state.isReadingImport || state.isPreparingSnapshot || state.saveSnapshotPresented)
        co_return;
    co_await checkRecommendedAccess(check);
    state.folderManagerPresented = true;
}

} // namespace tidemark
