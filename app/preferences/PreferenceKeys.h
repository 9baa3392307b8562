#pragma once

#include "app/preferences/Preferences.h"
#include "core/capture/CaptureSchedule.h"

#include <array>
#include <span>

namespace tidemark {

/// One key of the preferences and its properties. `fallback` is used when nothing or a value of
/// another type is stored. Kinds of keys with more properties derive from this.
template <class Value>
struct PreferenceKey {
    std::string_view name;
    Value fallback{};
    /// A description in one line, shown to the user.
    std::string_view meaning;
    /// True for keys that the program sets itself and the user can't.
    bool isInternal = false;
};

using TextList = std::span<const std::string_view>;

struct SwitchKey : PreferenceKey<bool> {};
/// A number outside of the range is read as the nearest bound.
struct NumberKey : PreferenceKey<std::int64_t> {
    std::int64_t least;
    std::int64_t most;
};
struct TextKey : PreferenceKey<std::string_view> {
    /// A function that returns the fallback of this system; null where systems do not differ.
    std::string_view (*systemFallback)() = nullptr;
};
/// A text that is not a choice is read as the fallback.
struct ChoiceKey : PreferenceKey<std::string_view> {
    /// A text that an earlier release wrote for one of the choices.
    struct Alias {
        std::string_view text;
        std::string_view choice;
    };

    TextList choices;
    Alias alias{};
    /// Used instead of the fallback while the settings are lost, unless empty.
    std::string_view whenLost{};
};
/// A list of paths. Relative paths in the fallback are relative to the home directory.
struct PathsKey : PreferenceKey<TextList> {};
struct DataKey : PreferenceKey<std::monostate> {};
struct DataTableKey : PreferenceKey<std::monostate> {};

using AnyPreferenceKey =
    std::variant<SwitchKey, NumberKey, TextKey, ChoiceKey, PathsKey, DataKey, DataTableKey>;

bool read(const Preferences& preferences, const SwitchKey& key);
std::int64_t read(const Preferences& preferences, const NumberKey& key);
std::string read(const Preferences& preferences, const TextKey& key);
std::string read(const Preferences& preferences, const ChoiceKey& key);
/// Returns the stored paths, or else those of the fallback, made absolute.
std::vector<std::string> read(const Preferences& preferences, const PathsKey& key);
/// How often a capture is due: the value of `preferenceKeys::captureSchedule`.
CaptureSchedule captureSchedule(const Preferences& preferences);

namespace preferenceKeys {

namespace detail {

inline constexpr std::array<std::string_view, 2> recordingModes{"recording", "paused"};
inline constexpr auto captureSchedules = [] {
    std::array<std::string_view, json::rawValues<CaptureSchedule>.size()> texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = json::rawValues<CaptureSchedule>[i].text;
    return texts;
}();
inline constexpr std::array<std::string_view, 6> timeWindows{"day",   "threeDays", "week",
                                                             "month", "custom",    "all"};
inline constexpr std::array<std::string_view, 3> appearanceModes{"light", "dark", "system"};
inline constexpr std::array<std::string_view, 3> memoryFolders{"Documents", "Desktop", "Downloads"};
/// The password managers of this system; a source file per system.
std::string_view passwordManagers();

} // namespace detail

// Capture.
inline constexpr ChoiceKey recordingMode{
    {"recordingMode", "recording", "Whether anything is recorded"},
    detail::recordingModes,
    {"privateMode", "paused"},
    // Damage of the file must not make a paused recording resume.
    "paused"};
inline constexpr SwitchKey needsRecordingBaseline{
    {"needsRecordingBaseline", false, "The next capture is not compared with the one before",
     true}};
inline constexpr SwitchKey settingsLost{
    {"settingsLost", false,
     "The settings were damaged, and whether the user had paused the recording is unknown", true}};
inline constexpr ChoiceKey captureSchedule{
    {"captureSchedule", "halfHourly", "How often a capture is due"}, detail::captureSchedules};
inline constexpr SwitchKey storageEnabled{
    {"storageEnabled", true, "Measure the storage of folders; a setting of an earlier release",
     true}};

// Screens.
inline constexpr ChoiceKey historyTimeWindow{
    {"historyTimeWindow", "week", "How far back the history is shown"}, detail::timeWindows};
inline constexpr NumberKey historyCustomWindowDays{
    {"historyCustomWindowDays", 3, "Days of the custom time window"}, 1, 365};
inline constexpr NumberKey listingTextSize{
    {"listingTextSize", 13, "Text size of the history list"}, 13, 26};
inline constexpr ChoiceKey appearanceMode{{"appearanceMode", "system", "Light or dark appearance"},
                                          detail::appearanceModes};
inline constexpr NumberKey windowWidth{
    {"windowWidth", 1280, "Width of the window", true}, 400, 16'000};
inline constexpr NumberKey windowHeight{
    {"windowHeight", 800, "Height of the window", true}, 300, 16'000};
inline constexpr NumberKey sidebarWidth{
    {"sidebarWidth", 220, "Width of the sidebar in the window", true}, 100, 2'000};
inline constexpr NumberKey inspectorWidth{
    {"inspectorWidth", 400, "Width of the details in the window", true}, 100, 4'000};
inline constexpr SwitchKey backgroundItemNotices{
    {"backgroundItemNotices", false, "Show a notification when new background items are found"}};
inline constexpr NumberKey historyLastSeen{
    {"historyLastSeen", 0, "When the history was last visible, in seconds since 1970", true},
    0,
    253'402'300'799};

// Folders.
inline constexpr DataKey observationFolderBookmarks{
    {"observationFolderBookmarks", {}, "The folders that Tidemark may read", true}};
inline constexpr SwitchKey unifiedFolderTrackingMigrated{
    {"unifiedFolderTrackingMigrated", false, "The single storage switch was taken over", true}};
inline constexpr PathsKey removedRecommendedPaths{
    {"removedRecommendedPaths", {}, "Recommended folders that the user removed", true}};
inline constexpr SwitchKey folderSetupCompleted{
    {"folderSetupCompleted", false, "The first choice of folders is done", true}};
inline constexpr SwitchKey diskAccessSetupPending{
    {"diskAccessSetupPending", false, "The user went to grant full disk access", true}};
inline constexpr SwitchKey diskAccessCheckRequested{
    {"diskAccessCheckRequested", false, "Check the access to folders when the user returns", true}};

// Additional observations.
inline constexpr SwitchKey homebrewHistoryEnabled{
    {"homebrewHistoryEnabled", false, "Observe installed Homebrew formulas"}};
inline constexpr SwitchKey diagnosticHistoryEnabled{
    {"diagnosticHistoryEnabled", false, "Observe diagnostic reports"}};
inline constexpr PathsKey configurationHistoryPaths{
    {"configurationHistoryPaths", {}, "Configuration files whose fingerprints are observed"}};

// Live history.
inline constexpr SwitchKey networkHistoryEnabled{
    {"networkHistoryEnabled", true, "Record network and Wi-Fi connections"}};
inline constexpr SwitchKey bluetoothHistoryEnabled{
    {"bluetoothHistoryEnabled", true, "Record Bluetooth connections"}};
inline constexpr SwitchKey environmentHistoryEnabled{
    {"environmentHistoryEnabled", true, "Record drives, displays and thermal pressure"}};
inline constexpr SwitchKey batteryHistoryEnabled{
    {"batteryHistoryEnabled", true, "Record power source and battery"}};
inline constexpr SwitchKey wifiNetworkNamesEnabled{
    {"wifiNetworkNamesEnabled", false, "Keep the names of Wi-Fi networks"}};

// Memory history.
inline constexpr SwitchKey memoryFiles{{"memoryFiles", true, "Remember recent files"}};
inline constexpr SwitchKey memoryApps{
    {"memoryApps", true, "Remember application launches and quits"}};
inline constexpr SwitchKey memoryAllIndexedFiles{
    {"memoryAllIndexedFiles", true, "Remember files anywhere, not in chosen folders alone"}};
inline constexpr PathsKey memoryFolders{
    {"memoryFolders", detail::memoryFolders, "The chosen folders"}};
inline constexpr DataTableKey memoryFolderBookmarks{
    {"memoryFolderBookmarks", {}, "Access to the chosen folders", true}};
inline constexpr SwitchKey memoryClipboard{
    {"memoryClipboard", false, "Remember what is copied to the clipboard"}};
inline constexpr NumberKey memoryClipboardDays{
    {"memoryClipboardDays", 7, "Days that clips are kept"}, 1, 3'650};
inline constexpr TextKey memoryExcludedApps{
    {"memoryExcludedApps", "",
     "Identifiers, separated by commas, of applications whose launches and clips are not recorded"},
    &detail::passwordManagers};

/// All keys, except "privateUntil", which earlier releases stored and which is only removed.
inline constexpr auto all = std::to_array<AnyPreferenceKey>({
    recordingMode,
    needsRecordingBaseline,
    settingsLost,
    captureSchedule,
    storageEnabled,
    historyTimeWindow,
    historyCustomWindowDays,
    listingTextSize,
    appearanceMode,
    windowWidth,
    windowHeight,
    sidebarWidth,
    inspectorWidth,
    backgroundItemNotices,
    historyLastSeen,
    observationFolderBookmarks,
    unifiedFolderTrackingMigrated,
    removedRecommendedPaths,
    folderSetupCompleted,
    diskAccessSetupPending,
    diskAccessCheckRequested,
    homebrewHistoryEnabled,
    diagnosticHistoryEnabled,
    configurationHistoryPaths,
    networkHistoryEnabled,
    bluetoothHistoryEnabled,
    environmentHistoryEnabled,
    batteryHistoryEnabled,
    wifiNetworkNamesEnabled,
    memoryFiles,
    memoryApps,
    memoryAllIndexedFiles,
    memoryFolders,
    memoryFolderBookmarks,
    memoryClipboard,
    memoryClipboardDays,
    memoryExcludedApps,
});

} // namespace preferenceKeys

} // namespace tidemark
