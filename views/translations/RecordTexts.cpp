#include "views/translations/CorePatterns.h"
#include "views/translations/CoreTexts.h"

#include <QtGlobal>
#include <array>

namespace tidemark {

namespace {

constexpr std::array textsOfRecords{
    QT_TRANSLATE_NOOP("core", "Downloaded"),
    QT_TRANSLATE_NOOP("core", "Modified"),
    QT_TRANSLATE_NOOP("core", "Created"),
    QT_TRANSLATE_NOOP("core", "Closed"),
    QT_TRANSLATE_NOOP("core", "Copied"),
    QT_TRANSLATE_NOOP("core", "Text"),
    QT_TRANSLATE_NOOP("core", "Rich Text"),
    QT_TRANSLATE_NOOP("core", "Image"),
    QT_TRANSLATE_NOOP("core", "Color"),
    QT_TRANSLATE_NOOP("core", "File"),
    QT_TRANSLATE_NOOP("core", "Wi-Fi"),
    QT_TRANSLATE_NOOP("core", "Cellular"),
    QT_TRANSLATE_NOOP("core", "Other network"),
    QT_TRANSLATE_NOOP("core", "Available"),
    QT_TRANSLATE_NOOP("core", "Unavailable"),
    QT_TRANSLATE_NOOP("core", "Connection required"),
    QT_TRANSLATE_NOOP("core", "Computer"),
    QT_TRANSLATE_NOOP("core", "Phone"),
    QT_TRANSLATE_NOOP("core", "Audio / video accessory"),
    QT_TRANSLATE_NOOP("core", "Input accessory"),
    QT_TRANSLATE_NOOP("core", "Imaging accessory"),
    QT_TRANSLATE_NOOP("core", "Wearable"),
    QT_TRANSLATE_NOOP("core", "Toy"),
    QT_TRANSLATE_NOOP("core", "Health accessory"),
    QT_TRANSLATE_NOOP("core", "Nominal"),
    QT_TRANSLATE_NOOP("core", "Fair"),
    QT_TRANSLATE_NOOP("core", "Serious"),
    QT_TRANSLATE_NOOP("core", "Critical"),
    QT_TRANSLATE_NOOP("core", "Open"),
    QT_TRANSLATE_NOOP("core", "Not recorded"),
    QT_TRANSLATE_NOOP("core", "Installed automatically"),
    QT_TRANSLATE_NOOP("core", "Previous size unavailable"),
    QT_TRANSLATE_NOOP("core", "Unknown version"),
    QT_TRANSLATE_NOOP("core", "Files in folder"),
    QT_TRANSLATE_NOOP("core", "Crash report"),
    QT_TRANSLATE_NOOP("core", "Diagnostic report"),
    QT_TRANSLATE_NOOP("core", "Hang report"),
    QT_TRANSLATE_NOOP("core", "Sample report"),
    QT_TRANSLATE_NOOP("core", "Executable inside application bundle"),
    QT_TRANSLATE_NOOP("core", "Possible association based on bundle identifier"),
    QT_TRANSLATE_NOOP("core", "Volume not known"),
    QT_TRANSLATE_NOOP("core", "Free space is not known at both ends of this period."),
    QT_TRANSLATE_NOOP("core",
                      "Free space can’t be compared: it is not known of which volume it is."),
    QT_TRANSLATE_NOOP("core", "Free space can’t be compared: it is that of another volume."),
    QT_TRANSLATE_NOOP("core", "Scanning Applications and Background Items…"),
    QT_TRANSLATE_NOOP("core", "Scanning Application Bundles…"),
    QT_TRANSLATE_NOOP("core", "Scanning Additional History"),
    QT_TRANSLATE_NOOP("core", "Scanning Trash…"),
    QT_TRANSLATE_NOOP("core", "Saving Observation…"),
    QT_TRANSLATE_NOOP("core", "This release can’t show notifications on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow the clipboard on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow applications on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow recent files on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow the battery on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow drives and displays on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow Bluetooth on this system."),
    QT_TRANSLATE_NOOP("core",
                      "This release can’t read the names of Wi-Fi networks on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t follow network connections on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t observe diagnostic reports on this system."),
    QT_TRANSLATE_NOOP("core", "This release can’t observe formulas on this system."),
    QT_TRANSLATE_NOOP("core", "Updated folder access couldn’t be saved."),
    QT_TRANSLATE_NOOP("core", "The overall storage scan was paused or reached its time limit."),
    QT_TRANSLATE_NOOP("core", "Could not completely read or save this folder."),
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
    QT_TRANSLATE_NOOP("core", "Background items: the crontabs of users are not observed. Only the "
                              "program crontab may read them."),
};

/// In most patterns with %1 and %2, a name is put for %1, and a translated text for %2.
constexpr std::array patternsOfRecords{
    QT_TRANSLATE_NOOP("core", "Storage · %1: %2 child folders measured. Completed measurements are "
                              "retained; unfinished work continues on later checks."),
    QT_TRANSLATE_NOOP("core", "Storage · %1: Some child-folder sizes are awaiting refresh. The "
                              "displayed total retains their earlier dated measurements."),
    QT_TRANSLATE_NOOP("core", "Storage · %1: %2 No size comparison was made."),
    QT_TRANSLATE_NOOP("core", "Storage · %1: %2 Earlier sizes are preserved; no partial total is "
                              "compared."),
    QT_TRANSLATE_NOOP("core", "Tidemark is already recording into %1 (process %2)."),
    QT_TRANSLATE_NOOP("core", "Tidemark is already recording into %1."),
    QT_TRANSLATE_NOOP("core", "Scanning %1…"),
    QT_TRANSLATE_NOOP("core", "%1 · inferred from filename"),
    QT_TRANSLATE_NOOP("core", "%1 Mbps · not internet speed"),
    QT_TRANSLATE_NOOP("core", "Couldn’t restore access to %1. Choose the folder again in "
                              "Settings."),
    QT_TRANSLATE_NOOP("core", "Folder access is unavailable for %1. Recheck access in Monitored "
                              "Folders."),
    QT_TRANSLATE_NOOP("core", "Please select %1, or deselect that folder from setup. No access was "
                              "saved for the different folder."),
    QT_TRANSLATE_NOOP("core", "Not yet readable: %1. Check folder permissions."),
    QT_TRANSLATE_NOOP("core", "Select %1 to approve this recommended folder."),
    QT_TRANSLATE_NOOP("core", "Applications: incomplete access or scan limit at %1. Changes in "
                              "this location are paused."),
    QT_TRANSLATE_NOOP("core", "Applications: metadata could not be read for %1 app or folder "
                              "locations. These locations are excluded from comparisons."),
    QT_TRANSLATE_NOOP("core", "Applications: %1 nested folders were beyond the four-level search "
                              "limit. This is a scan boundary, not a permission error; apps "
                              "deeper inside those folders are not tracked."),
    QT_TRANSLATE_NOOP("core", "Applications: %1 symbolic links were skipped. Link targets are not "
                              "followed outside the selected folder."),
    QT_TRANSLATE_NOOP("core", "Background items: %1 definitions could not be read or did not "
                              "contain valid metadata. They are excluded from comparisons."),
    QT_TRANSLATE_NOOP("core", "Background items: %1 symbolic links were skipped; their targets are "
                              "not followed."),
    QT_TRANSLATE_NOOP("core", "Background items: cannot completely read %1. Changes in this "
                              "location are paused."),
    QT_TRANSLATE_NOOP("core", "Background items: cannot completely read %1. Changes in this "
                              "location and in the folders that it can override are paused."),
    QT_TRANSLATE_NOOP("core", "Additional history: could not completely inspect %1. No comparison "
                              "was made."),
    QT_TRANSLATE_NOOP("core", "Selected file is not a local regular file under 1 MB: %1"),
    QT_TRANSLATE_NOOP("core", "Selected file is not a local regular file: %1"),
    QT_TRANSLATE_NOOP("core", "Selected file could not be read: %1"),
    QT_TRANSLATE_NOOP("core", "Selected file read failed: %1"),
    QT_TRANSLATE_NOOP("core", "Selected file changed while being read: %1"),
};

/// What could not be done, followed by why: one of `causes`, or another sentence.
constexpr std::array failures{
    QT_TRANSLATE_NOOP(
        "core",
        "Tidemark couldn’t read its history. Your existing file has not been overwritten. %1"),
    QT_TRANSLATE_NOOP("core", "Couldn’t capture a fresh snapshot. %1"),
    QT_TRANSLATE_NOOP("core", "The snapshot couldn’t be saved. %1"),
    QT_TRANSLATE_NOOP("core", "The observation couldn’t be saved. %1"),
    QT_TRANSLATE_NOOP("core", "History couldn’t be saved. %1"),
    QT_TRANSLATE_NOOP("core", "Couldn’t save the export. %1"),
    QT_TRANSLATE_NOOP("core",
                      "Couldn’t remember the selected folders. No new folders were saved. %1"),
    QT_TRANSLATE_NOOP("core", "Couldn’t save the readable folder selections. %1"),
    QT_TRANSLATE_NOOP("core", "Application size history could not be read or saved. Existing data "
                              "was preserved. %1"),
};

constexpr std::array causes{
    QT_TRANSLATE_NOOP("core", "%1 could not be read: %2"),
    QT_TRANSLATE_NOOP("core", "%1 could not be written: %2"),
    QT_TRANSLATE_NOOP("core", "%1 could not be opened: %2"),
    QT_TRANSLATE_NOOP("core", "%1 could not be created: %2"),
    QT_TRANSLATE_NOOP("core", "%1 could not be locked: %2"),
};

} // namespace

std::span<const char* const> recordTexts() {
    return textsOfRecords;
}

std::span<const char* const> recordPatterns() {
    return patternsOfRecords;
}

std::span<const char* const> failurePatterns() {
    return failures;
}

std::span<const char* const> causePatterns() {
    return causes;
}

} // namespace tidemark
