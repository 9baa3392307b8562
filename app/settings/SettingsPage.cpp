#include "app/settings/SettingsPage.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Text.h"
#include "core/presentation/HistoryTimeWindow.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

namespace {

using Kind = SettingsRow::Kind;
using Command = SettingsRow::Command;
using systemWords::shown;

/// Makes the rows of one group. A row whose text is empty on this system is left out.
class Group {
public:
    Group(const SettingsPageState& used, std::string_view heading) : state(used) {
        made.heading = shown(heading);
    }

    Group& text(std::string_view words) { return add({.kind = Kind::text, .label = shown(words)}); }
    Group& command(Command command, std::string_view label, bool isPossible = true) {
        return add({.kind = Kind::button,
                    .label = shown(label),
                    .command = command,
                    .absence = isPossible ? "" : "Not possible at this moment."});
    }
    Group& toggle(const SwitchKey& key, std::string_view label) {
        SettingsRow row{.kind = Kind::toggle, .label = shown(label), .key = key.name};
        row.isOn = read(state.preferences, key);
        row.absence = absenceOf(key.name);
        return add(std::move(row));
    }
    Group& toggle(Command command, std::string_view label, bool isOn) {
        return add({.kind = Kind::toggle, .label = shown(label), .command = command, .isOn = isOn});
    }
    Group& choice(const ChoiceKey& key, std::string_view label,
                  std::vector<SettingsRow::Option> options) {
        SettingsRow row{.kind = Kind::choice, .label = shown(label), .key = key.name};
        row.value = read(state.preferences, key);
        row.options = std::move(options);
        row.absence = absenceOf(key.name);
        return add(std::move(row));
    }
    Group& number(const NumberKey& key, std::string_view label) {
        SettingsRow row{.kind = Kind::number, .label = shown(label), .key = key.name};
        row.value = std::to_string(read(state.preferences, key));
        row.absence = absenceOf(key.name);
        return add(std::move(row));
    }
    Group& textField(const TextKey& key, std::string_view label) {
        SettingsRow row{.kind = Kind::textField, .label = shown(label), .key = key.name};
        row.value = read(state.preferences, key);
        row.absence = absenceOf(key.name);
        return add(std::move(row));
    }
    /// A path in a list, which `command` removes from it.
    Group& path(Command command, const std::string& path, std::string_view help = "") {
        SettingsRow row{
            .kind = Kind::path, .label = oneLine(path), .command = command, .value = path};
        row.help = shown(help);
        return add(std::move(row));
    }
    Group& add(SettingsRow row) {
        if (!row.label.empty())
            made.rows.push_back(std::move(row));
        return *this;
    }

    SettingsGroup group() { return std::move(made); }

private:
    std::string absenceOf(std::string_view key) const {
        return shown(state.sources.absence(key).value_or(""));
    }

    const SettingsPageState& state;
    SettingsGroup made;
};

std::vector<SettingsRow::Option> scheduleOptions() {
    std::vector<SettingsRow::Option> options;
    for (const auto& [schedule, raw] : json::rawValues<CaptureSchedule>)
        options.push_back({std::string(raw), std::string(label(schedule))});
    return options;
}

SettingsSection foldersSection(const SettingsPageState& state) {
    Group group(state, "");
    group.command(Command::openFolders, "Monitored Folders…");
    return {"Monitored Folders", {group.group()}};
}

SettingsSection observationSection(const SettingsPageState& state, const Calendar& calendar) {
    Group group(state, "");
    if (state.opensAtLogin) {
        group.toggle(Command::openLogin, "Open at Login", *state.opensAtLogin);
        if (state.loginNeedsApproval)
            group.text("Allow Tidemark in Login Items to finish enabling this setting.")
                .command(Command::openLoginItems, "Open Login Items");
    }
    group.choice(preferenceKeys::captureSchedule, "Automatic captures", scheduleOptions());
    if (read(state.preferences, preferenceKeys::captureSchedule)
        == rawValue(CaptureSchedule::manual)) {
        group.text("Use Check Now to capture manually.");
    } else {
        if (state.nextCapture)
            group.text("Next capture due: "
                       + calendar.format(*state.nextCapture, "d MMM yyyy, HH:mm"));
        group.text("Keep Tidemark running to record changes.");
    }
    group.toggle(preferenceKeys::backgroundItemNotices, "Notify about new background items");
    return {"Observation", {group.group()}};
}

SettingsGroup recordingControls(const SettingsPageState& state) {
    return Group(state, "")
        .command(Command::changeRecording,
                 state.isRecording ? "Pause recording" : "Resume recording",
                 state.canChangeRecording)
        .text("Pause stops collection. Resuming starts a fresh observation; saved snapshot "
              "comparisons can still reveal net changes made during the interval.")
        .group();
}

SettingsGroup additionalHistory(const SettingsPageState& state) {
    Group group(state, "Additional History");
    group.toggle(preferenceKeys::homebrewHistoryEnabled, "Homebrew formula changes")
        .toggle(preferenceKeys::diagnosticHistoryEnabled, "New diagnostic report files")
        .text("Diagnostic reports may require Full Disk Access.")
        .command(Command::addConfigurationFile, "Choose Configuration Files")
        .text("Track changes in selected files up to 1 MB. File contents are read but never "
              "saved.");
    for (const auto& path : read(state.preferences, preferenceKeys::configurationHistoryPaths))
        group.path(Command::removeConfigurationFile, path,
                   "Stop tracking this file; existing history is retained");
    return group.group();
}

SettingsGroup filesAndApplications(const SettingsPageState& state) {
    Group group(state, "Files and Applications");
    group.toggle(preferenceKeys::memoryFiles, "Recent files and downloads")
        .toggle(preferenceKeys::memoryAllIndexedFiles, "Files outside of the chosen folders, too");
    if (!read(state.preferences, preferenceKeys::memoryAllIndexedFiles)) {
        for (const auto& folder : read(state.preferences, preferenceKeys::memoryFolders))
            group.path(Command::removeFolder, folder,
                       "Stop recording files of this folder; existing history is retained");
        group.command(Command::includeFolder, "Include Folder…");
    }
    return group.text(state.fileStatus)
        .toggle(preferenceKeys::memoryApps, "Application launches and quits")
        .group();
}

SettingsGroup clipboardHistory(const SettingsPageState& state) {
    const auto absence = state.sources.absence(preferenceKeys::memoryClipboard.name);
    Group group(state, "Clipboard History");
    group.toggle(preferenceKeys::memoryClipboard, "Remember what is copied");
    // The switch already shows the reason for which copies can't be recorded.
    if (absence != state.clipboardStatus)
        group.text(state.clipboardStatus);
    group.text("Items that their program marks as secret are never read. Browser extensions of "
               "password managers usually mark nothing.");
    return group.number(preferenceKeys::memoryClipboardDays, "Days to keep clips")
        .command(Command::clearClipboard, "Clear Clipboard History…")
        .group();
}

SettingsGroup excludedApplications(const SettingsPageState& state) {
    return Group(state, "Excluded Applications")
        .textField(preferenceKeys::memoryExcludedApps, "Identifiers, with commas between them")
        .text("Launches of these applications and what is copied from them are not recorded.")
        .group();
}

SettingsSection privacySection(const SettingsPageState& state) {
    std::vector<SettingsGroup> groups;
    groups.push_back(recordingControls(state));
    groups.push_back(
        Group(state, "Connection History")
            .toggle(preferenceKeys::networkHistoryEnabled, "Network connection changes")
            .toggle(preferenceKeys::wifiNetworkNamesEnabled, "Wi-Fi network names")
            .toggle(preferenceKeys::bluetoothHistoryEnabled, "Bluetooth activity")
            .text("Bluetooth requires permission and supports paired devices.")
            .group());
    groups.push_back(Group(state, "Battery History")
                         .toggle(preferenceKeys::batteryHistoryEnabled, "Power and battery changes")
                         .text("Includes Low Power Mode, charging, and low battery.")
                         .group());
    groups.push_back(Group(state, "Environment History")
                         .toggle(preferenceKeys::environmentHistoryEnabled,
                                 "Drives, displays, and thermal pressure")
                         .group());
    groups.push_back(additionalHistory(state));
    groups.push_back(filesAndApplications(state));
    groups.push_back(clipboardHistory(state));
    groups.push_back(excludedApplications(state));
    return {"Recording & Privacy", std::move(groups)};
}

SettingsSection readingSection(const SettingsPageState& state) {
    Group group(state, "");
    group
        .choice(preferenceKeys::appearanceMode, "Appearance",
                {{"system", "As the system"}, {"light", "Light"}, {"dark", "Dark"}})
        .text("Listing text: "
              + std::to_string(read(state.preferences, preferenceKeys::listingTextSize)))
        .text("Use ⌘+ or ⌘− to resize timeline, file, download, clipboard and search listings. ⌘0 "
              "restores the default.")
        .text("Time windows filter retained history. Saved snapshot comparisons use their own "
              "observation interval.");
    return {"Reading & Time Window", {group.group()}};
}

std::string shortcutText(const GlobalShortcut::Availability& shortcut) {
    if (!shortcut.isAvailable)
        return "Shortcut unavailable; use the menu bar";
    return shortcut.keys.empty() ? "Control–Shift–Space" : shortcut.keys;
}

SettingsSection historySection(const SettingsPageState& state) {
    Group group(state, "");
    group.text("Import available installation records from the last seven days.")
        .command(Command::importHistory, "Import Recent History")
        .command(Command::searchHistory, "Search History")
        .text(shortcutText(state.shortcut));
    if (!state.shortcut.obstacle.empty())
        group.text(state.shortcut.obstacle);
    std::vector<SettingsGroup> groups{group.group()};
    if (state.hasUpdater)
        groups.push_back(Group(state, "Updates")
                             .toggle(Command::automaticUpdateChecks,
                                     "Automatically check for updates", state.checksForUpdates)
                             .toggle(Command::automaticUpdateDownloads,
                                     "Automatically download and install updates",
                                     state.downloadsUpdates)
                             .command(Command::checkForUpdates, "Check for Updates…")
                             .group());
    return {"History", std::move(groups)};
}

} // namespace

std::vector<SettingsSection> settingsPage(const SettingsPageState& state,
                                          const Calendar& calendar) {
    return {foldersSection(state), observationSection(state, calendar), privacySection(state),
            readingSection(state), historySection(state)};
}

} // namespace tidemark
