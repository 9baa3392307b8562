#include "app/settings/FolderManagerPage.h"

#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

namespace {

using Row = FolderManagerPage::Row;
using Status = FolderAccess::AccessStatus;
using systemWords::shown;

std::string statusOf(const FolderAccess& access, const std::string& path) {
    switch (access.accessStatus(path)) {
    case Status::readable:
        return "Readable";
    case Status::unavailable:
        return shown(access.accessFailure(path).value_or("Not readable"));
    case Status::unchecked:
        break;
    }
    return "Not checked yet";
}

void offerAction(Row& row, const FolderAccess& access, bool isGuardedBySystem) {
    if (row.isMonitored && access.accessStatus(row.path) != Status::unavailable)
        return;
    const std::string setUp = shown("Set Up Access");
    if (isGuardedBySystem && !setUp.empty()) {
        row.status = shown("Requires Full Disk Access");
        row.action = Row::Action::setUpAccess;
        row.actionLabel = setUp;
        return;
    }
    row.action = Row::Action::allow;
    row.actionLabel = "Allow Folder";
}

Row rowOf(const std::string& name, std::string path, const FolderGrant* grant,
          bool isGuardedBySystem, const FolderAccess& access) {
    Row row;
    row.name = oneLine(name);
    row.path = std::move(path);
    row.isMonitored = grant && !grant->purposes.empty();
    if (grant)
        row.grant = grant->id;
    // For a folder that is not monitored, "Not checked yet" would announce a check that is not
    // made.
    if (row.isMonitored || access.accessStatus(row.path) != Status::unchecked)
        row.status = statusOf(access, row.path);
    offerAction(row, access, isGuardedBySystem);
    row.accessibleText = row.name + ", " + (row.isMonitored ? "monitored" : "not monitored");
    for (const auto& text : {row.status, oneLine(row.path)})
        if (!text.empty())
            row.accessibleText += ", " + text;
    return row;
}

/// The row of a monitored folder that is not recommended.
Row rowOfGrant(const FolderGrant& grant, const FolderAccess& access) {
    Row row = rowOf(std::string(lastPathComponent(grant.path)), grant.path, &grant, false, access);
    row.isNamed = true;
    return row;
}

const FolderGrant* grantAt(const std::vector<FolderGrant>& grants, const std::string& path) {
    const auto found = std::ranges::find(grants, path, &FolderGrant::path);
    return found == grants.end() ? nullptr : &*found;
}

} // namespace

FolderManagerPage folderManagerPage(const FolderManagerState& state) {
    FolderManagerPage page;
    page.heading = state.isFirstSetup ? "Welcome to Tidemark" : "Monitored Folders";
    const auto& grants = state.access.grants();
    std::set<std::string> listed;
    const auto& recommended = state.access.recommendedFolders();
    for (std::size_t i = 0; i < recommended.size(); ++i) {
        const auto& folder = recommended[i];
        const auto path = i < state.recommendedPaths.size() ? state.recommendedPaths[i]
                                                            : textFromBytes(folder.url.native());
        page.rows.push_back(rowOf(folder.title, path, grantAt(grants, path),
                                  folder.isGuardedBySystem, state.access));
        listed.insert(path);
    }
    for (const auto& grant : grants)
        if (!listed.contains(grant.path))
            page.rows.push_back(rowOfGrant(grant, state.access));
    if (state.currentFolder)
        page.requesting = "Requesting access to " + *state.currentFolder;
    return page;
}

std::string StopMonitoring::title(std::string_view name) {
    return "Stop monitoring " + oneLine(name);
}

DiskAccessPanel DiskAccessPanel::of(const std::string& name) {
    DiskAccessPanel panel;
    panel.openSettings = shown("Open System Settings");
    panel.steps =
        shown("1. Open Full Disk Access in System Settings.\n2. Use + to add this copy of " + name
              + ", then enable it. Restart this same copy if asked.");
    panel.scope = shown("Access applies to this copy of " + name
                        + "; other Tidemark entries may belong to different builds. Full Disk "
                          "Access is a broad permission. Tidemark only monitors your selected "
                          "folders.");
    panel.showProgram = shown("Show This App");
    panel.showProgramHelp = shown("Reveal the exact app to add to Full Disk Access");
    panel.check = shown("Check Access");
    panel.checkNote = shown("Checks folder access only; it does not measure storage.");
    panel.failure =
        shown("If access is enabled for this exact app, quit and reopen this same copy, then click "
              "Check Access. An enabled entry for a different Tidemark build does not grant access "
              "to this one.");
    return panel;
}

} // namespace tidemark
