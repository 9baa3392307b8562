#include "app/preferences/SettingSource.h"

#include "app/preferences/PreferenceKeys.h"

#include <algorithm>

namespace tidemark {

namespace {

struct Need {
    std::string_view key;
    SettingSource source;
};

/// The settings that need a source. A setting with several rows needs only one of their sources.
constexpr auto needs = std::to_array<Need>({
    {preferenceKeys::homebrewHistoryEnabled.name, SettingSource::formulas},
    {preferenceKeys::diagnosticHistoryEnabled.name, SettingSource::diagnosticReports},
    {preferenceKeys::networkHistoryEnabled.name, SettingSource::network},
    {preferenceKeys::wifiNetworkNamesEnabled.name, SettingSource::wifiNames},
    {preferenceKeys::bluetoothHistoryEnabled.name, SettingSource::bluetooth},
    {preferenceKeys::environmentHistoryEnabled.name, SettingSource::environment},
    {preferenceKeys::batteryHistoryEnabled.name, SettingSource::battery},
    {preferenceKeys::memoryFiles.name, SettingSource::recentFiles},
    {preferenceKeys::memoryAllIndexedFiles.name, SettingSource::recentFiles},
    {preferenceKeys::memoryFolders.name, SettingSource::recentFiles},
    {preferenceKeys::memoryApps.name, SettingSource::applicationLaunches},
    {preferenceKeys::memoryClipboard.name, SettingSource::clipboard},
    {preferenceKeys::memoryClipboardDays.name, SettingSource::clipboard},
    {preferenceKeys::memoryExcludedApps.name, SettingSource::clipboard},
    {preferenceKeys::memoryExcludedApps.name, SettingSource::applicationLaunches},
    {preferenceKeys::backgroundItemNotices.name, SettingSource::notifications},
    {preferenceKeys::historyTimeWindow.name, SettingSource::windows},
    {preferenceKeys::historyCustomWindowDays.name, SettingSource::windows},
    {preferenceKeys::listingTextSize.name, SettingSource::windows},
    {preferenceKeys::appearanceMode.name, SettingSource::windows},
});

std::string_view useOf(SettingSource source) {
    switch (source) {
    case SettingSource::formulas:
        return "observe formulas";
    case SettingSource::diagnosticReports:
        return "observe diagnostic reports";
    case SettingSource::network:
        return "follow network connections";
    case SettingSource::wifiNames:
        return "read the names of Wi-Fi networks";
    case SettingSource::bluetooth:
        return "follow Bluetooth";
    case SettingSource::environment:
        return "follow drives and displays";
    case SettingSource::battery:
        return "follow the battery";
    case SettingSource::recentFiles:
        return "follow recent files";
    case SettingSource::applicationLaunches:
        return "follow applications";
    case SettingSource::clipboard:
        return "follow the clipboard";
    case SettingSource::notifications:
        return "show notifications";
    case SettingSource::windows:
        return "show a window";
    }
    return "do that";
}

} // namespace

std::optional<std::string> SettingSources::absence(std::string_view key) const {
    const auto* need = std::ranges::find(needs, key, &Need::key);
    const bool hasAny = std::ranges::any_of(
        needs, [&](const Need& any) { return any.key == key && available.contains(any.source); });
    if (need == needs.end() || hasAny)
        return std::nullopt;
    if (const auto reason = why.find(need->source); reason != why.end())
        return reason->second;
    return "This release can’t " + std::string(useOf(need->source)) + " on this system.";
}

} // namespace tidemark
