#include "app/model/FolderSetup.h"

#include "app/preferences/PreferenceKeys.h"

#include <utility>

namespace tidemark {

namespace {

constexpr const char* privacyPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";
constexpr const char* systemSettings = "/System/Applications/System Settings.app";

} // namespace

void FolderSetup::present() {
    if (auto begun = state.operations().begin(Operation::choosingFolders))
        choosing = std::move(begun);
}

void FolderSetup::begin() {
    auto begun = state.operations().begin(Operation::managingFolders);
    if (!begun)
        return;
    managing = std::move(begun);
    selectionAtOpen = folders.selection();
}

void FolderSetup::cancel() {
    selectionAtOpen.reset();
    managing.reset();
}

void FolderSetup::complete() {
    cancel();
    folders.completeSetup();
    choosing.reset();
}

QCoro::Task<void> FolderSetup::finish() {
    const auto hold = tasks.hold();
    const bool firstSetup =
        !read(preferences, preferenceKeys::folderSetupCompleted) || !state.latest();
    const auto before = std::exchange(selectionAtOpen, std::nullopt);
    const bool selectionChanged = before && *before != folders.selection();
    complete();
    if (!state.isEnding)
        co_await imports.importInitialHistoryIfNeeded();
    if ((firstSetup || selectionChanged) && !folders.grants().empty())
        co_await flow.scan(false);
}

QCoro::Task<void> FolderSetup::checkRecommendedAccess(FolderAccess::Check check) {
    const auto hold = tasks.hold();
    const auto checking = state.operations().begin(Operation::checkingFolders);
    if (checking)
        co_await this->check(std::move(check));
}

QCoro::Task<void> FolderSetup::check(FolderAccess::Check check) {
    preferences.note(preferenceKeys::diskAccessCheckRequested.name, false);
    co_await folders.enableReadableRecommended(folders.recommendedFolders(), check);
}

void FolderSetup::openDiskAccessPane(const std::function<bool(const std::string&)>& open) {
    preferences.note(preferenceKeys::diskAccessSetupPending.name, true);
    preferences.note(preferenceKeys::diskAccessCheckRequested.name, true);
    if (!open(privacyPane))
        open(systemSettings);
}

QCoro::Task<void> FolderSetup::resumeOnActivation(FolderAccess::Check check) {
    const auto hold = tasks.hold();
    if (!read(preferences, preferenceKeys::diskAccessCheckRequested))
        co_return;
    const auto checking = state.operations().begin(Operation::checkingAfterReturn);
    if (!checking)
        co_return;
    co_await this->check(std::move(check));
    present();
}

} // namespace tidemark
