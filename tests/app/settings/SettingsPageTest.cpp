#include "app/settings/SettingsPage.h"

#include "app/preferences/PreferenceKeys.h"
#include "app/settings/DeveloperSuggestions.h"
#include "tests/app/support/MemoryPreferences.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace tidemark {
namespace {

using test::MemoryPreferences;

std::vector<SettingsRow> rowsOf(const SettingsPageState& state) {
    std::vector<SettingsRow> rows;
    for (auto& section : settingsPage(state, Calendar("UTC")))
        for (auto& group : section.groups)
            std::ranges::move(group.rows, std::back_inserter(rows));
    return rows;
}

bool hasText(const std::vector<SettingsRow>& rows, std::string_view text) {
    return std::ranges::any_of(rows, [&](const auto& row) { return row.label.contains(text); });
}

/// Settings without a row of their own: they are set in the toolbar, above the list, or by a button
/// of the page.
constexpr auto elsewhere = std::to_array<std::string_view>({
    preferenceKeys::recordingMode.name,
    preferenceKeys::historyTimeWindow.name,
    preferenceKeys::historyCustomWindowDays.name,
    preferenceKeys::listingTextSize.name,
    preferenceKeys::configurationHistoryPaths.name,
    preferenceKeys::memoryFolders.name,
});

TEST(SettingsPage, ShowsEverySettingOnceAndWhyItHasNoEffect) {
    const MemoryPreferences preferences;
    const SettingSources none({}, {{SettingSource::formulas, "Homebrew is not installed."}});
    const auto rows = rowsOf({.preferences = preferences, .sources = none});
    for (const auto& any : preferenceKeys::all)
        std::visit(
            [&](const auto& key) {
                const auto shown = std::ranges::count(rows, key.name, &SettingsRow::key);
                const bool isElsewhere = std::ranges::count(elsewhere, key.name) > 0;
                EXPECT_EQ(shown, key.isInternal || isElsewhere ? 0 : 1) << key.name;
            },
            any);
    for (const auto& row : rows)
        EXPECT_EQ(row.absence, none.absence(row.key).value_or("")) << row.key;
    EXPECT_TRUE(hasText(rows, "Shortcut unavailable"));
    EXPECT_FALSE(hasText(rows, "Open at Login"));
    EXPECT_FALSE(hasText(rows, "updates"));
    EXPECT_FALSE(hasText(rows, "Full Disk Access"));
}

TEST(SettingsPage, FollowsTheSchedule) {
    MemoryPreferences preferences;
    const SettingSources none({});
    SettingsPageState state{.preferences = preferences, .sources = none};
    state.nextCapture = Date{0};
    EXPECT_TRUE(hasText(rowsOf(state), "Next capture due: 1 Jan 2001, 00:00"));
    preferences.set("captureSchedule", std::string("manual"));
    EXPECT_FALSE(hasText(rowsOf(state), "Next capture due"));
    EXPECT_TRUE(hasText(rowsOf(state), "Use Check Now to capture manually."));
}

TEST(SettingsPage, ShowsChosenFoldersAndTheStateOfTheClipboard) {
    MemoryPreferences preferences;
    const SettingSources some({SettingSource::applicationLaunches},
                              {{SettingSource::clipboard, "No session."}});
    SettingsPageState state{.preferences = preferences, .sources = some};
    EXPECT_FALSE(hasText(rowsOf(state), "Include Folder…"));
    preferences.set("memoryAllIndexedFiles", false);
    preferences.set("memoryFolders", std::vector<std::string>{"/a\nb", "/c"});
    state.clipboardStatus = "Recording copied items";
    const auto rows = rowsOf(state);
    EXPECT_TRUE(hasText(rows, "Include Folder…"));
    std::string removable;
    for (const auto& row : rows)
        if (row.command == SettingsRow::Command::removeFolder)
            removable += row.label + "=" + row.value + " ";
    EXPECT_EQ(removable, "/a\uFFFDb=/a\nb /c=/c ");
    EXPECT_TRUE(hasText(rows, "Recording copied items"));
    const auto excluded =
        std::ranges::find(rows, preferenceKeys::memoryExcludedApps.name, &SettingsRow::key);
    EXPECT_TRUE(excluded->isEnabled()) << "it also excludes launches";
    state.clipboardStatus = "No session.";
    EXPECT_FALSE(hasText(rowsOf(state), "No session.")) << "shown with the switch already";
}

TEST(DeveloperSuggestions, AreExistingFoldersEvenIfAlreadyMonitored) {
    using developerSuggestions::Location;
    constexpr auto places = std::to_array<Location>(
        {{"Data", "Library/Developer", ""}, {"Work", "Work", ""}, {"File", "File", ""}});
    FolderGrant covering;
    covering.path = "/home/u/Library";
    covering.purposes = {FolderPurpose::storage};
    FolderGrant other;
    other.path = "/home/u/Work";
    other.purposes = {FolderPurpose::applications};
    const auto isDirectory = [](const std::filesystem::path& path) {
        return path.filename() != "File";
    };
    const auto found =
        developerSuggestions::found(places, "/home/u", {covering, other}, isDirectory);
    ASSERT_EQ(found.size(), 2);
    EXPECT_TRUE(found[0].isCovered);
    EXPECT_FALSE(found[1].isCovered);
    EXPECT_EQ(developerSuggestions::homeOf({{"D", "/x/Downloads"}}, "/home/u"), "/x");
    EXPECT_EQ(developerSuggestions::homeOf({{"D", "/x/downloads"}}, "/home/u"), "/home/u");
}

} // namespace
} // namespace tidemark
