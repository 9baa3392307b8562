#include "core/presentation/SystemWords.h"

#include <array>

namespace tidemark::systemWords {

namespace {

constexpr auto entries = std::to_array<Entry>({
    // Places and categories.
    {"Your Mac", "Your Computer"},
    {"Mac Activity", "System Activity"},
    {"macActivity", "systemActivity"},
    {"launchAgents", "userServices"},
    {"launchDaemons", "systemServices"},

    // Titles and second lines of events.
    {"Mac Going to Sleep", "Computer Going to Sleep"},
    {"Mac Woke Up", "Computer Woke Up"},
    {"macOS Changed", "Operating System Changed"},
    {"LaunchAgent", "User service"},
    {"LaunchDaemon", "System service"},
    {"Imported from macOS", "Imported from the system"},

    // Where an activity comes from, and what it does not prove.
    {"macOS workspace notification", "System notification"},
    {"macOS volume notification", "System volume notification"},
    {"macOS display-configuration notification", "System display-configuration notification"},
    {"macOS thermal-state notification", "System thermal-state notification"},
    {"macOS network path notification", "System network path notification"},
    {"macOS Bluetooth connection notification", "System Bluetooth connection notification"},
    {"macOS Wi-Fi link notification", "System Wi-Fi link notification"},
    {"macOS Bluetooth power notification", "System Bluetooth power notification"},
    {"macOS power-source notification", "System power-source notification"},
    {"macOS power-mode notification", "System power-mode notification"},
    {"macOS notified Tidemark that the Mac was about to sleep. This is the notification time, not "
     "proof of when sleep completed.",
     "The system notified Tidemark that the computer was about to sleep. This is the notification "
     "time, not proof of when sleep completed."},
    {"macOS notified Tidemark that the Mac woke from sleep.",
     "The system notified Tidemark that the computer woke from sleep."},
    {"The displays available to macOS changed. Docking, mirroring, or virtual displays can affect "
     "this inventory. No screen content or display serial numbers are collected.",
     "The displays available to the system changed. Docking, mirroring, or virtual displays can "
     "affect this inventory. No screen content or display serial numbers are collected."},
    {"macOS reported elevated system thermal pressure or recovery. This is not a temperature "
     "reading or proof of why an app slowed down. Mild fluctuations are omitted.",
     "The system reported elevated thermal pressure or recovery. This is not a temperature reading "
     "or proof of why an app slowed down. Mild fluctuations are omitted."},
    {"macOS reported a change in the network path available to Tidemark. An available path does "
     "not confirm internet access. Interface types do not identify a Wi-Fi network, a VPN "
     "provider, or whether traffic is protected by a VPN.",
     "The system reported a change in the network path available to Tidemark. An available path "
     "does not confirm internet access. Interface types do not identify a Wi-Fi network, a VPN "
     "provider, or whether traffic is protected by a VPN."},
    {"A connection change was observed for a paired Bluetooth device exposed by macOS IOBluetooth. "
     "Brief reconnects are filtered. This is not a complete history of Bluetooth Low Energy "
     "devices or nearby devices.",
     "A connection change was observed for a paired Bluetooth device known to the system. Brief "
     "reconnects are filtered. This is not a complete history of Bluetooth Low Energy devices or "
     "nearby devices."},
    {"macOS reported a change in the physical Wi-Fi link. This is separate from internet access "
     "and the default network route; Ethernet or a VPN may remain available. Network names are "
     "included only when enabled and permitted.",
     "The system reported a change in the physical Wi-Fi link. This is separate from internet "
     "access and the default network route; Ethernet or a VPN may remain available. Network names "
     "are included only when enabled and permitted."},
    {"Recorded while Tidemark is awake and running with network history enabled. The new link "
     "state must remain stable for 2 seconds; shorter reconnect fluctuations are filtered. Initial "
     "and unavailable link metadata establish a new starting point; macOS may coalesce very rapid "
     "transitions.",
     "Recorded while Tidemark is awake and running with network history enabled. The new link "
     "state must remain stable for 2 seconds; shorter reconnect fluctuations are filtered. Initial "
     "and unavailable link metadata establish a new starting point; the system may coalesce very "
     "rapid transitions."},
    {"macOS reported that the Bluetooth radio turned on or off. This is separate from the "
     "connection state of individual accessories.",
     "The system reported that the Bluetooth radio turned on or off. This is separate from the "
     "connection state of individual accessories."},
    {"macOS reported a change in the internal battery or power source. External power does not "
     "necessarily mean the battery is charging. Small percentage changes are not timeline events.",
     "The system reported a change in the internal battery or power source. External power does "
     "not necessarily mean the battery is charging. Small percentage changes are not timeline "
     "events."},
    {"macOS reported that Low Power Mode became enabled or disabled. This records the effective "
     "mode, not who changed it or whether it changed automatically with the power source.",
     "The system reported that Low Power Mode became enabled or disabled. This records the "
     "effective mode, not who changed it or whether it changed automatically with the power "
     "source."},
    {"macOS connection cost flag", "Connection cost flag"},

    // What prevents the history of connections.
    {"Bluetooth permission is unavailable. Review Privacy & Security → Bluetooth in System "
     "Settings.",
     "Bluetooth permission is unavailable. The rules of the system bus do not let you use the "
     "Bluetooth service."},
    {"In System Settings → Privacy & Security → Location Services, enable Location Services and "
     "Tidemark.",
     "The system does not permit reading the names of Wi-Fi networks."},

    // The memory history.
    {"macOS Spotlight last-used metadata. It may be delayed or unavailable and does not identify "
     "which application opened the file.",
     "Last-used metadata of the desktop. It may be delayed or unavailable and does not identify "
     "which application opened the file."},
    {"macOS Spotlight metadata, not a complete filesystem audit. Indexed files only; times may "
     "precede Tidemark's observation.",
     "File metadata of the desktop, not a complete filesystem audit. Known files only; times may "
     "precede Tidemark's observation."},
    {"Download metadata supplied by macOS Spotlight. A last-used date is not proof of reading a "
     "document. Missing metadata is unknown.",
     "Download metadata supplied by the desktop. A last-used date is not proof of reading a "
     "document. Missing metadata is unknown."},
    {"Captured after clipboard history was enabled. Source is the frontmost application at capture "
     "time and may differ from the writer. Sensitive marked items and excluded apps are skipped.",
     "Captured after clipboard history was enabled. Source is the application that copied where "
     "the desktop reports it, else the one in front. Sensitive marked items and excluded apps are "
     "skipped."},
    {"Observed macOS application launch notification while Tidemark was recording.",
     "Observed application launch while Tidemark was recording."},
    {"Observed macOS application termination notification while Tidemark was recording. Closing a "
     "window alone does not quit the application.",
     "Observed application termination while Tidemark was recording. Closing a window alone does "
     "not quit the application."},

    {"Indexed files across this Mac{}", "Document folders and recently used files{}"},
    {"File index unavailable. Check folder access and Spotlight indexing.",
     "Recent files can’t be followed. Check folder access."},
    {"No indexed matches. Check folder access and Spotlight indexing.",
     "No recent changes in the document folders"},

    // The inspector.
    {"No system snapshots were saved during this interval. Tidemark may have been closed, your Mac "
     "asleep, or a capture delayed or unsuccessful. This does not establish a shutdown or loss of "
     "folder access. Sleep/wake notifications may still have been recorded.",
     "No system snapshots were saved during this interval. Tidemark may have been closed, your "
     "computer asleep, or a capture delayed or unsuccessful. This does not establish a shutdown or "
     "loss of folder access. Sleep/wake notifications may still have been recorded."},
    {"Imported from macOS installation history", "Imported from the system’s installation history"},
    {"This record does not establish whether the installation was new or an update, its previous "
     "version, or whether the software is still present. macOS history does not cover every "
     "installation method.",
     "This record does not establish whether the installation was new or an update, its previous "
     "version, or whether the software is still present. The system’s history does not cover every "
     "installation method."},
    {"Previous macOS", "Previous operating system"},
    {"Installed formula versions only. Casks are covered by Applications; custom Homebrew "
     "locations "
     "are not included.",
     "Installed formula versions only. Custom Homebrew locations are not included."},
    {"Volume-wide available space can change independently of tracked folders, including system "
     "activity and APFS snapshots.",
     "Volume-wide available space can change independently of tracked folders, including system "
     "activity and file system snapshots."},
    {"Logical file sizes. APFS clones, compression, and overlapping locations mean this is not "
     "physical disk usage.",
     "Logical file sizes. Clones, compression, and overlapping locations mean this is not physical "
     "disk usage."},
    {"Login Items Settings…", ""},

    // Empty lists and messages.
    {"A reference point for your Mac", "A reference point for your computer"},
    {"Your Mac’s Story Starts Here", "Your Computer’s Story Starts Here"},
    {"Tidemark has not captured a recent observation. Use Check Now to capture your Mac’s current "
     "state.",
     "Tidemark has not captured a recent observation. Use Check Now to capture your computer’s "
     "current state."},
    {"History stays on your Mac", "History stays on your computer"},
    {"{}macOS denied folder access to this running copy of Tidemark.",
     "{}The system denied folder access to this running copy of Tidemark."},
    {"{}. Check System Settings or folder permissions.", "{}. Check folder permissions."},
    {"Background definitions are not observed until you allow a LaunchAgents or LaunchDaemons "
     "folder in Settings.",
     "Background definitions are not observed until you allow a folder of background agents or "
     "system daemons in Settings."},
    {"This edition requires individual folder approval. Full Disk Access does not override its "
     "sandbox.",
     "This edition requires individual folder approval."},
    {"Folder access is unavailable for {}. Recheck access in Monitored Folders. Trash requires "
     "Full Disk Access for the installed copy of Tidemark.",
     "Folder access is unavailable for {}. Recheck access in Monitored Folders."},
    {"Select the .Trash folder, not your home folder. Hidden folders are visible. You can also "
     "press Shift–Command–G and enter {}",
     "Select the .Trash folder, not your home folder. Hidden folders are visible. You can also "
     "type {}"},
    {"Command-click to select multiple folders.", "Ctrl-click to select multiple folders."},
    {"If macOS opens your home folder, select .Trash in the list.\nOr press Shift–Command–G and "
     "enter ~/.Trash.",
     ""},

    // Importing what the system remembers.
    {"macOS couldn’t provide installation history. Try again; the report may have timed out or "
     "access may be unavailable.",
     "The system couldn’t provide installation history. Try again; the report may have timed out "
     "or access may be unavailable."},
    {"macOS returned an installation report in an unsupported format. Your history has not been "
     "changed.",
     "The system returned an installation report in an unsupported format. Your history has not "
     "been changed."},
    {"Import installation records from the last 7 days. They’ll appear on their recorded dates, "
     "labeled “Imported from macOS.”",
     "Import installation records from the last 7 days. They’ll appear on their recorded dates, "
     "labeled “Imported from the system.”"},
    {"Reading macOS installation history…", "Reading the system’s installation history…"},
    {"Include macOS maintenance records", "Include the system’s maintenance records"},
    {"Includes XProtect, MRT, Gatekeeper configuration, and Core Services configuration updates.",
     "Includes packages that were installed because others needed them."},
    {"Local to this Mac", "Local to this computer"},
    {"Only macOS maintenance records were found. Include them above to preview those records.",
     "Only the system’s maintenance records were found. Include them above to preview those "
     "records."},
    {"Added {} from macOS. This partial history covers the last 7 days; future captures will "
     "reveal new changes.",
     "Added {} from the system. This partial history covers the last 7 days; future captures will "
     "reveal new changes."},
    {"{} malformed records in the macOS report were skipped.",
     "{} malformed records in the system’s report were skipped."},

    // Set-up and settings.
    {"Choose what Tidemark observes. Everything stays on this Mac.",
     "Choose what Tidemark observes. Everything stays on this computer."},
    {"Suggested locations found on this Mac. Select the ones you want to monitor.",
     "Suggested locations found on this computer. Select the ones you want to monitor."},
    {"Requires Full Disk Access", ""},
    {"Set Up Access", ""},
    {"1. Open Full Disk Access in System Settings.\n2. Use + to add this copy of {}", ""},
    {"Access applies to this copy of {}; other Tidemark entries may belong to different builds. "
     "Full Disk Access is a broad permission. Tidemark only monitors your selected folders.",
     ""},
    {"Open System Settings", ""},
    {"Show This App", ""},
    {"Reveal the exact app to add to Full Disk Access", ""},
    {"Allow Tidemark in Login Items to finish enabling this setting.", ""},
    {"Open Login Items", ""},
    {"Diagnostic reports may require Full Disk Access.", ""},

    // Keys.
    {"Check for changes (⌘R)", "Check for changes (Ctrl+R)"},
    {"Search history · ⌃⇧Space", "Search history · Ctrl+Shift+Space"},
    {"Control–Shift–Space", "Ctrl+Shift+Space"},
    {"Shortcut unavailable; use the menu bar", "Shortcut unavailable; use the tray menu"},
    {"Use ⌘+ or ⌘− to resize timeline, file, download, clipboard and search listings. ⌘0 restores "
     "the default.",
     "Use Ctrl++ or Ctrl+− to resize timeline, file, download, clipboard and search listings. "
     "Ctrl+0 restores the default."},
});

} // namespace

std::span<const Entry> table() {
    return entries;
}

} // namespace tidemark::systemWords
