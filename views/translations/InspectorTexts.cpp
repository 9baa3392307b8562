#include "views/translations/CoreTexts.h"

#include <QtGlobal>
#include <array>

namespace tidemark {

namespace {

constexpr std::array textsOfInspector{
    QT_TRANSLATE_NOOP("core", "Other installer"),
    QT_TRANSLATE_NOOP("core",
                      "Select an event to inspect its source, observation interval, and details."),
    QT_TRANSLATE_NOOP(
        "core",
        "No system snapshots were saved during this interval. Tidemark may have been closed, your "
        "computer asleep, or a capture delayed or unsuccessful. This does not establish a shutdown "
        "or loss of folder access. Sleep/wake notifications may still have been recorded."),
    QT_TRANSLATE_NOOP("core",
                      "This record does not establish whether the installation was new or an "
                      "update, its previous version, or whether the software is still present. The "
                      "system’s history does not cover every installation method."),
    QT_TRANSLATE_NOOP("core", "Recorded sizes · — unknown · ≥ measured subtotal\nAll changes "
                              "shown, regardless of timeline thresholds."),
    QT_TRANSLATE_NOOP(
        "core", "A definition on disk does not confirm that this item is enabled or running."),
    QT_TRANSLATE_NOOP("core", "Nothing is shown or captured until it can be read. Your existing "
                              "file has not been overwritten."),
    QT_TRANSLATE_NOOP("core",
                      "Tidemark records these notifications only while running. This is not a "
                      "complete power history and does not include display-only sleep."),
    QT_TRANSLATE_NOOP(
        "core", "Recorded while environment history is enabled and Tidemark is awake and running. "
                "Changes settle for 2 seconds. Startup, wake, and re-enabling establish a "
                "baseline; events during observation gaps cannot be reconstructed."),
    QT_TRANSLATE_NOOP(
        "core", "A legacy workspace notification was recorded. It does not establish that the user "
                "requested a shutdown or logout and is excluded from the activity timeline."),
    QT_TRANSLATE_NOOP("core", "A visible mounted volume appeared or disappeared. This may be an "
                              "external drive, disk image, or network volume; it does not "
                              "establish that hardware was plugged in or safely ejected."),
    QT_TRANSLATE_NOOP(
        "core",
        "The displays available to the system changed. Docking, mirroring, or virtual displays can "
        "affect this inventory. No screen content or display serial numbers are collected."),
    QT_TRANSLATE_NOOP("core",
                      "Recorded only while Tidemark is awake and running with network history "
                      "enabled. Changes lasting less than 2 seconds are ignored. A new starting "
                      "point is established after sleep, relaunch, or re-enabling history."),
    QT_TRANSLATE_NOOP("core",
                      "A connection change was observed for a paired Bluetooth device known to the "
                      "system. Brief reconnects are filtered. This is not a complete history of "
                      "Bluetooth Low Energy devices or nearby devices."),
    QT_TRANSLATE_NOOP("core", "Recorded only while Tidemark is awake and running with Bluetooth "
                              "history enabled and permitted. Reconnects shorter than 5 seconds "
                              "are ignored. Existing connections at startup are not new events."),
    QT_TRANSLATE_NOOP("core",
                      "Recorded while Tidemark is awake and running with network history enabled. "
                      "The new link state must remain stable for 2 seconds; shorter reconnect "
                      "fluctuations are filtered. Initial and unavailable link metadata establish "
                      "a new starting point; the system may coalesce very rapid transitions."),
    QT_TRANSLATE_NOOP(
        "core",
        "Recorded while Tidemark is awake and running with Bluetooth history enabled and "
        "permitted. The initial radio state and unknown or unavailable states are not power "
        "events. Sleep, relaunch, or re-enabling history establishes a new starting point."),
    QT_TRANSLATE_NOOP("core",
                      "Recorded while Tidemark is awake and running with battery history enabled. "
                      "Changes settle for 2 seconds. Initial, missing, and post-sleep observations "
                      "establish a new starting point. Low battery is recorded below 20%, then "
                      "rearmed after recovery to at least 25% on external power."),
    QT_TRANSLATE_NOOP("core",
                      "Recorded while Tidemark is awake and running with power and battery history "
                      "enabled. Initial observations, relaunch, and wake establish a new starting "
                      "point. Duplicate notifications do not create events."),
    QT_TRANSLATE_NOOP(
        "core", "The folder could not be opened. It may be missing or access may be unavailable."),
    QT_TRANSLATE_NOOP("core", "Some entries could not be read."),
    QT_TRANSLATE_NOOP("core", "The scan reached its time limit. Folder access may be valid; the "
                              "size measurement was not completed."),
    QT_TRANSLATE_NOOP("core", "The scan reached its entry limit. Folder access may be valid; the "
                              "size measurement was not completed."),
    QT_TRANSLATE_NOOP("core", "A cloud-only directory has no locally available listing. Tidemark "
                              "does not download its contents to measure size."),
    QT_TRANSLATE_NOOP("core", "The scan was cancelled."),
    QT_TRANSLATE_NOOP("core",
                      "Measurement paused at a work limit and will continue on a later check."),
    QT_TRANSLATE_NOOP("core", "Download metadata supplied by the desktop. A last-used date is not "
                              "proof of reading a document. Missing metadata is unknown."),
    QT_TRANSLATE_NOOP("core", "Observed application launch while Tidemark was recording."),
    QT_TRANSLATE_NOOP("core", "Observed application termination while Tidemark was recording. "
                              "Closing a window alone does not quit the application."),
    QT_TRANSLATE_NOOP(
        "core", "Legacy foreground-time record. Tidemark no longer collects foreground sessions."),
    QT_TRANSLATE_NOOP("core", "Captured after clipboard history was enabled. Source is the "
                              "frontmost application at capture time and may differ from the "
                              "writer. Sensitive marked items and excluded apps are skipped."),
    QT_TRANSLATE_NOOP("core", "Some child folders have no completed measurement."),
    QT_TRANSLATE_NOOP("core",
                      "Application bundles only; other files in this folder are not included."),
    QT_TRANSLATE_NOOP("core", "Another storage measurement is still running."),
    QT_TRANSLATE_NOOP("core", "Background items: the crontabs of users are not observed. Only the "
                              "program crontab may read them."),
    QT_TRANSLATE_NOOP("core", "Application storage records individual app bundles, not all files "
                              "in Applications. Last-measured sizes may have different dates; "
                              "unfinished bundles do not contribute a size."),
    QT_TRANSLATE_NOOP("core", "The folder has more than 10,000 files of its own. Their total size "
                              "is recorded, but not their names."),
    QT_TRANSLATE_NOOP("core", "The overall storage scan was paused or reached its time limit. No "
                              "size comparison was made."),
    QT_TRANSLATE_NOOP("core", "Could not completely read or save this folder."),
    QT_TRANSLATE_NOOP("core", "Some child-folder sizes are awaiting refresh. The displayed total "
                              "retains their earlier dated measurements."),
    QT_TRANSLATE_NOOP("core", "Scanning Application Bundles…"),
    QT_TRANSLATE_NOOP("core", "Scanning Applications and Background Items…"),
    QT_TRANSLATE_NOOP("core", "The data folder was removed or replaced while Tidemark was running; "
                              "start Tidemark again."),
    QT_TRANSLATE_NOOP(
        "core",
        "No recent installation records were available. Tidemark will record changes from now on."),
    QT_TRANSLATE_NOOP("core", "Recent history couldn’t be imported. New changes will still be "
                              "recorded. You can retry using Import recent history…"),
    QT_TRANSLATE_NOOP(
        "core", "Activity history couldn’t be opened. The existing file has not been replaced."),
    QT_TRANSLATE_NOOP("core",
                      "Activity history could not be saved. Activity history may be incomplete."),
    QT_TRANSLATE_NOOP("core", "The settings are damaged, so a copy of them is used."),
    QT_TRANSLATE_NOOP("core", "The settings are damaged, so the defaults are used."),
    QT_TRANSLATE_NOOP("core", "Updated folder access couldn’t be saved."),
    QT_TRANSLATE_NOOP(
        "core",
        "No Applications folder has active access. Choose one in Settings to track app changes."),
    QT_TRANSLATE_NOOP("core", "Background definitions are not observed until you allow a folder of "
                              "background agents or system daemons in Settings."),
    QT_TRANSLATE_NOOP("core", "Folder does not currently exist."),
    QT_TRANSLATE_NOOP("core", "This location is not a folder."),
    QT_TRANSLATE_NOOP(
        "core",
        "Saved folder access couldn’t be read. Choose folders again to restore observation."),
    QT_TRANSLATE_NOOP("core", "The settings can’t be saved."),
    QT_TRANSLATE_NOOP("core", "All selected folders are ready."),
    QT_TRANSLATE_NOOP("core", "Folder access was unavailable during the check."),
    QT_TRANSLATE_NOOP("core", "The clipboard history can’t be changed before it has been read."),
    QT_TRANSLATE_NOOP("core", "The clipboard history can’t be changed, because the last change "
                              "could not be saved. Start Tidemark again."),
    QT_TRANSLATE_NOOP("core", "New activity history could not be saved. Collection stopped to "
                              "protect the existing file."),
    QT_TRANSLATE_NOOP("core", "About this event"),
    QT_TRANSLATE_NOOP("core", "Close details"),
    QT_TRANSLATE_NOOP("core", "STATE DIFFERENCE"),
    QT_TRANSLATE_NOOP("core", "CHANGE DETAILS"),
    QT_TRANSLATE_NOOP("core", "System service"),
    QT_TRANSLATE_NOOP("core", "Connection cost flag"),
    QT_TRANSLATE_NOOP("core", "System Agents"),
    QT_TRANSLATE_NOOP("core", "System Daemons"),
    QT_TRANSLATE_NOOP("core", "Developer Data"),
    QT_TRANSLATE_NOOP("core", "Version not recorded"),
    QT_TRANSLATE_NOOP("core", "Background items"),
    QT_TRANSLATE_NOOP("core", "The History Couldn’t Be Read"),
    QT_TRANSLATE_NOOP("core", "Launched"),
    QT_TRANSLATE_NOOP("core", "1 event · observed history"),
    QT_TRANSLATE_NOOP("core", "Quit"),
    QT_TRANSLATE_NOOP("core", "Your background agents"),
    QT_TRANSLATE_NOOP("core", "System background daemons"),
    QT_TRANSLATE_NOOP("core", "Optional software"),
    QT_TRANSLATE_NOOP("core", "Local software"),
    QT_TRANSLATE_NOOP("core", "Documents"),
    QT_TRANSLATE_NOOP("core", "Less Space Available"),
    QT_TRANSLATE_NOOP("core", "Space Freed Up"),
    QT_TRANSLATE_NOOP("core", "Trash Is Now Empty"),
    QT_TRANSLATE_NOOP("core", "New Background Item"),
    QT_TRANSLATE_NOOP("core", "Background Item Removed"),
    QT_TRANSLATE_NOOP("core", "Background Item Changed"),
    QT_TRANSLATE_NOOP("core", "Captures Resumed"),
    QT_TRANSLATE_NOOP("core", "Operating System Changed"),
    QT_TRANSLATE_NOOP("core", "This computer has no Bluetooth adapter."),
    QT_TRANSLATE_NOOP("core", "UPower, the service that reports batteries, does not run."),
    QT_TRANSLATE_NOOP("core", "The Bluetooth service BlueZ does not run."),
    QT_TRANSLATE_NOOP("core", "Homebrew is not installed."),
    QT_TRANSLATE_NOOP("core", "No folder of crash reports is there."),
    QT_TRANSLATE_NOOP("core", "NetworkManager, which knows the names of Wi-Fi networks, is not "
                              "installed."),
    QT_TRANSLATE_NOOP("core", "NetworkManager, which knows the names of Wi-Fi networks, does not "
                              "run."),
    QT_TRANSLATE_NOOP("core", "Critical Thermal Pressure"),
    QT_TRANSLATE_NOOP("core", "High Thermal Pressure"),
    QT_TRANSLATE_NOOP("core", "Thermal Pressure Eased"),
    QT_TRANSLATE_NOOP("core", "Bluetooth Connection Changed"),
    QT_TRANSLATE_NOOP("core", "Wi-Fi Disconnected"),
    QT_TRANSLATE_NOOP("core", "Wi-Fi Network Changed"),
    QT_TRANSLATE_NOOP("core", "Wi-Fi Connected"),
    QT_TRANSLATE_NOOP("core", "Computer Going to Sleep"),
    QT_TRANSLATE_NOOP("core", "Computer Woke Up"),
    QT_TRANSLATE_NOOP("core", "Unverified Session-End Notification"),
    QT_TRANSLATE_NOOP("core", "Network Connection Changed"),
    QT_TRANSLATE_NOOP("core", "Network Connection Unavailable"),
    QT_TRANSLATE_NOOP("core", "Network Connection Available"),
    QT_TRANSLATE_NOOP("core", "Bluetooth Turned On"),
    QT_TRANSLATE_NOOP("core", "Bluetooth Turned Off"),
    QT_TRANSLATE_NOOP("core", "Battery Changed"),
    QT_TRANSLATE_NOOP("core", "Low Power Mode Enabled"),
    QT_TRANSLATE_NOOP("core", "Low Power Mode Disabled"),
    QT_TRANSLATE_NOOP("core", "Recorded while Tidemark was running"),
    QT_TRANSLATE_NOOP("core", "Wi-Fi link"),
    QT_TRANSLATE_NOOP("core", "Paired device"),
    QT_TRANSLATE_NOOP("core", "Power Connected"),
    QT_TRANSLATE_NOOP("core", "Switched to Battery"),
    QT_TRANSLATE_NOOP("core", "Battery Fully Charged"),
    QT_TRANSLATE_NOOP("core", "Battery Low"),
    QT_TRANSLATE_NOOP("core", "Selected configuration file"),
    QT_TRANSLATE_NOOP("core", "Content fingerprint changed"),
    QT_TRANSLATE_NOOP("core", "New Diagnostic Report"),
    QT_TRANSLATE_NOOP("core", "An extended interval without saved captures"),
};

} // namespace

std::span<const char* const> inspectorTexts() {
    return textsOfInspector;
}

} // namespace tidemark
