#pragma once

#include "app/capture/FolderAccess.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The page on which the user chooses what is observed, which is also the first set-up. The members
/// are ready to be shown. The constants have the terms of macOS; pass them through
/// `systemWords::shown`, which replaces these by the terms of the system, before they are shown.
struct FolderManagerPage {
    static constexpr std::string_view explanation =
        "Choose what Tidemark observes. Everything stays on this Mac.";
    static constexpr std::string_view listHeading = "Folders to Monitor";
    static constexpr std::string_view addFolders = "Add Additional Folders";
    static constexpr std::string_view later = "You can finish setup later.";
    static constexpr std::string_view finish = "Continue";

    /// A recommended folder or one that the user added.
    struct Row {
        /// What the button of the row does.
        enum class Action { none, allow, setUpAccess };

        std::string name;
        /// True for the folder's own name; false for words of this program.
        bool isNamed = false;
        std::string path;
        /// The identifier of the folder's grant; absent without one. A folder whose grant has no
        /// purpose is not monitored.
        std::optional<Uuid> grant;
        bool isMonitored = false;
        /// Whether the folder can be read; empty for one that is not monitored and was not checked.
        std::string status;
        Action action = Action::none;
        /// Empty without a button.
        std::string actionLabel;
        std::string accessibleText;
    };

    std::string heading;
    std::vector<Row> rows;
    /// Which folder the user is asked to choose; may be empty.
    std::string requesting;
};

/// The state from which the page is made.
struct FolderManagerState {
    bool isFirstSetup = false;
    const FolderAccess& access;
    /// The paths of the recommended folders, in their order, with links resolved. That is done in
    /// the background, because a folder may not respond; empty until then.
    std::vector<std::string> recommendedPaths{};
    /// The title of the folder that the user is asked to choose.
    std::optional<std::string> currentFolder{};
};

/// The recommended folders in their order, then those that the user added.
FolderManagerPage folderManagerPage(const FolderManagerState& state);

/// The confirmation before a folder is removed.
struct StopMonitoring {
    static constexpr std::string_view explanation =
        "Future captures will no longer check this folder. A capture already in progress may "
        "finish using the previous selection. Your existing history stays saved. You can add the "
        "folder again later.";

    static std::string title(std::string_view name);
};

/// The panel that helps the user to allow the program, in the settings of the system, to read all
/// folders. All texts are empty on a system without such a permission.
struct DiskAccessPanel {
    std::string steps;
    std::string scope;
    std::string openSettings;
    std::string showProgram;
    std::string showProgramHelp;
    std::string check;
    std::string checkNote;
    /// Shown after a check that failed.
    std::string failure;

    bool isShown() const { return !steps.empty(); }
    /// `name` is that of the program.
    static DiskAccessPanel of(const std::string& name);
};

} // namespace tidemark
