#pragma once

#include "app/ports/GlobalShortcut.h"
#include "app/preferences/Preferences.h"
#include "app/preferences/SettingSource.h"
#include "core/base/Calendar.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// One line of the settings: its label, its value and its effect.
struct SettingsRow {
    enum class Kind {
        /// A note, without a control.
        text,
        toggle,
        choice,
        number,
        textField,
        button,
        /// A path, with a button that removes it from a list.
        path,
    };
    enum class Command {
        none,
        openFolders,
        openLogin,
        openLoginItems,
        changeRecording,
        addConfigurationFile,
        removeConfigurationFile,
        includeFolder,
        removeFolder,
        clearClipboard,
        importHistory,
        searchHistory,
        checkForUpdates,
        automaticUpdateChecks,
        automaticUpdateDownloads,
    };
    struct Option {
        /// The stored value.
        std::string value;
        std::string label;

        bool operator==(const Option&) const = default;
    };

    Kind kind = Kind::text;
    std::string label{};
    /// The key of the preference that the control sets; empty if it sets none.
    std::string_view key{};
    /// The command of a control that sets no preference.
    Command command = Command::none;
    bool isOn = false;
    /// The stored value of a choice, a number or a text field, or the path that a command is about.
    std::string value{};
    std::vector<Option> options{};
    /// Why the control does nothing here, as a sentence; it is disabled then. Empty otherwise.
    std::string absence{};
    /// The tool tip; may be empty.
    std::string help{};

    bool isEnabled() const { return absence.empty(); }
};

struct SettingsGroup {
    /// Empty for rows directly below the heading of the section.
    std::string heading;
    std::vector<SettingsRow> rows;
};

struct SettingsSection {
    std::string heading;
    std::vector<SettingsGroup> groups;
};

/// The state that the page shows besides the stored preferences.
struct SettingsPageState {
    const Preferences& preferences;
    const SettingSources& sources;
    bool isRecording = true;
    bool canChangeRecording = true;
    /// Absent where the next capture is not scheduled.
    std::optional<Date> nextCapture{};
    /// Whether the program starts when the user logs in; absent where that is not possible.
    std::optional<bool> opensAtLogin{};
    /// True when the user still has to allow that in the system's settings.
    bool loginNeedsApproval = false;
    /// What the file history does at present; empty when that is not known.
    std::string fileStatus{};
    /// What is recorded of the clipboard at present; empty while its history is off.
    std::string clipboardStatus{};
    /// Whether the keys that open the search panel from any program work.
    GlobalShortcut::Availability shortcut{};
    /// True when this build updates itself.
    bool hasUpdater = false;
    bool checksForUpdates = false;
    bool downloadsUpdates = false;
};

/// All sections in their order, in the words of this system. Rows for something that this system
/// does not have are left out; a control without a source is disabled, with the reason.
std::vector<SettingsSection> settingsPage(const SettingsPageState& state,
                                          const Calendar& calendar = Calendar());

/// The texts of the dialog that picks configuration files.
inline constexpr std::string_view configurationFilesPrompt =
    "Choose configuration files. Tidemark reads files under 1 MB to store a fingerprint; contents "
    "are never saved.";

/// The confirmation before the clipboard history is deleted.
inline constexpr std::string_view clearClipboardQuestion =
    "Delete all saved clipboard items, including pins?";
inline constexpr std::string_view clearClipboardConfirm = "Delete Clipboard History";

} // namespace tidemark
