#include "app/preferences/SettingSource.h"

#include "app/preferences/PreferenceKeys.h"

#include <algorithm>

namespace tidemark {

namespace {

struct Need {
    std::string_view key;
    SettingSource source;
};

/// The settings that need a source. One that is named several times needs any of these.
constexpr auto needs = std::to_array<Need>({
    {preference::homebrewHistoryEnabled.name, SettingSource::formulas},
    {preference::diagnosticHistoryEnabled.name, SettingSource::diagnosticReports},
    {preference::networkHistoryEnabled.name, SettingSource::network},
    {preference::wifiNetworkNamesEnabled.name, SettingSource::network},
    {preference::bluetoothHistoryEnabled.name, SettingSource::bluetooth},
    {preference::environmentHistoryEnabled.name, SettingSource::environment},
    {preference::batteryHistoryEnabled.name, SettingSource::battery},
    {preference::memoryFiles.name, SettingSource::recentFiles},
    {preference::memoryAllIndexedFiles.name, SettingSource::recentFiles},
    {preference::memoryFolders.name, SettingSource::recentFiles},
    {preference::memoryApps.name, SettingSource::applicationLaunches},
    {preference::memoryClipboard.name, SettingSource::clipboard},
    {preference::memoryClipboardDays.name, SettingSource::clipboard},
    {preference::memoryExcludedApps.name, SettingSource::clipboard},
    {preference::memoryExcludedApps.name, SettingSource::applicationLaunches},
    {preference::backgroundItemNotices.name, SettingSource::notifications},
    {preference::historyTimeWindow.name, SettingSource::windows},
    {preference::historyCustomWindowDays.name, SettingSource::windows},
    {preference::listingTextSize.name, SettingSource::windows},
    {preference::appearanceMode.name, SettingSource::windows},
});

std::string_view useOf(SettingSource source) {
    switch (source) {
    case SettingSource::formulas:
        return "observe formulas";
    case SettingSource::diagnosticReports:
        return "observe diagnostic reports";
    case SettingSource::network:
        return "follow network connections";
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
