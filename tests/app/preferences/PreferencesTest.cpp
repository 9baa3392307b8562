#include "app/preferences/FollowSettings.h"
#include "app/preferences/JsonPreferences.h"
#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/ManualClock.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <set>

#include <gtest/gtest.h>

using namespace tidemark;
using test::TemporaryFolder;

namespace {

constexpr std::string_view damagedName = "settings.json.damaged-2023-03-08T20.26.40Z";
constexpr std::string_view secondName = "settings.json.damaged-2023-03-08T20.26.40Z-2";

} // namespace

TEST(JsonPreferences, KeepsEveryTypeInAPrivateFile) {
    const TemporaryFolder folder;
    const auto file = folder / "config/tidemark/settings.json";
    const std::map<std::string, Data> table{{"/home/a", {std::string("\0\xFF", 2)}}, {"/b", {}}};
    {
        JsonPreferences preferences(file);
        EXPECT_EQ(preferences.boolean("flag"), std::nullopt);
        EXPECT_TRUE(preferences.set("flag", false));
        EXPECT_TRUE(preferences.set("number", std::int64_t{-5}));
        EXPECT_TRUE(preferences.set("text", std::string("naïve")));
        EXPECT_TRUE(preferences.set("texts", std::vector<std::string>{"a", "b"}));
        EXPECT_TRUE(preferences.set("data", Data{"{}"}));
        EXPECT_TRUE(preferences.set("table", table));
        EXPECT_TRUE(preferences.set("gone", true));
        EXPECT_TRUE(preferences.remove("gone"));
    }
    const JsonPreferences preferences(file);
    EXPECT_EQ(preferences.boolean("flag"), false);
    EXPECT_EQ(preferences.integer("number"), -5);
    EXPECT_EQ(preferences.text("text"), "naïve");
    EXPECT_EQ(preferences.texts("texts"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(preferences.data("data"), Data{"{}"});
    EXPECT_EQ(preferences.dataTable("table"), table);
    EXPECT_EQ(preferences.boolean("gone"), std::nullopt);
    for (const char* name : {"settings.json", "settings.json.bak"})
        EXPECT_EQ(test::modeOf(file.parent_path() / name), 0600U);
    EXPECT_EQ(test::modeOf(file.parent_path()), 0700U);
    EXPECT_EQ(test::namesIn(file.parent_path()), "settings.json settings.json.bak");
}

TEST(JsonPreferences, TreatsOtherTypesAsAbsentAndKeepsUnknownKeys) {
    const TemporaryFolder folder;
    const auto file = folder.write("settings.json", R"({
        "one": 1, "real": 1.5, "text": "%", "mixed": ["a", 1], "huge": 18446744073709551615,
        "null": null, "object": {"a": "YQ==", "b": 2}, "future": {"deep": [1.25, {"x": null}]}})");
    JsonPreferences preferences(file);
    EXPECT_EQ(preferences.boolean("one"), std::nullopt);
    EXPECT_EQ(preferences.text("one"), std::nullopt);
    EXPECT_EQ(preferences.integer("real"), std::nullopt);
    EXPECT_EQ(preferences.integer("huge"), std::nullopt);
    EXPECT_EQ(preferences.integer("text"), std::nullopt);
    EXPECT_EQ(preferences.data("text"), std::nullopt);
    EXPECT_EQ(preferences.texts("mixed"), std::nullopt);
    EXPECT_EQ(preferences.texts("text"), std::nullopt);
    EXPECT_EQ(preferences.dataTable("object"), std::nullopt);
    EXPECT_EQ(preferences.boolean("null"), std::nullopt);

    EXPECT_TRUE(preferences.set("one", true));
    const std::string after = test::contents(file);
    for (const char* kept : {"\"deep\"", "1.25", "18446744073709551615", "\"x\": null"})
        EXPECT_NE(after.find(kept), std::string::npos) << kept;
}

TEST(JsonPreferences, RenamesADamagedFileAndUsesTheDefaults) {
    std::vector<std::string> damages{"",     "{\"a\": tr",     "[]",       "{} {}",
                                     "null", "{\"a\xFF\": 1}", "\"text\"", "{\"a\":"};
    damages.back().append(100'000, '[').append(100'000, ']') += '}';
    for (const auto& damage : damages) {
        const TemporaryFolder folder;
        const auto file = folder.write("settings.json", damage);
        folder.write(damagedName, "earlier");
        test::ManualClock clock;
        JsonPreferences preferences(file, clock);

        EXPECT_EQ(test::contents(folder / secondName), damage);
        EXPECT_EQ(test::contents(folder / damagedName), "earlier");
        ASSERT_TRUE(preferences.problem());
        EXPECT_NE(preferences.problem()->find(damagedName), std::string::npos);
        EXPECT_TRUE(preferences.isLost());
        EXPECT_EQ(read(preferences, preferenceKeys::recordingMode), "paused");
        EXPECT_EQ(read(preferences, preferenceKeys::memoryFiles), true);
        EXPECT_EQ(read(JsonPreferences(file), preferenceKeys::recordingMode), "paused");
        EXPECT_TRUE(preferences.set("a", true));
        EXPECT_EQ(JsonPreferences(file).boolean("a"), true);
        EXPECT_EQ(JsonPreferences(file).problem(), std::nullopt);
        EXPECT_EQ(read(JsonPreferences(file), preferenceKeys::recordingMode), "paused")
            << "until the user sets it";
        folder.write("settings.json", damage);
        EXPECT_TRUE(JsonPreferences(file, clock).isLost()) << "stored in the copy";
    }
}

TEST(JsonPreferences, RenamesAndRemovesNothingWhenTheGuardRefuses) {
    const FolderGuard refused([] { return false; });
    for (const char* settings : {"{", "{}"}) {
        const TemporaryFolder folder;
        const auto file = folder.write("settings.json", settings);
        // Without the guard, this copy would be removed, because it can't be read.
        std::filesystem::create_symlink("nowhere", folder / "settings.json.bak");
        EXPECT_THROW(
            JsonPreferences(file, JsonPreferences::Opening::toWrite, Clock::system(), refused),
            Error);
        EXPECT_EQ(test::namesIn(folder.path()), "settings.json settings.json.bak") << settings;
    }
}

TEST(JsonPreferences, AsksTheGuardBeforeEachStepOfAChange) {
    // Three checks come before the settings are replaced, three more before the copy is.
    for (int permitted = 0; permitted <= 6; ++permitted) {
        const TemporaryFolder folder;
        const auto file = folder / "settings.json";
        JsonPreferences(file).set("a", 1);
        int left = 1;
        const FolderGuard guard([&] { return left-- > 0; });
        JsonPreferences preferences(file, JsonPreferences::Opening::toWrite, Clock::system(),
                                    guard);
        left = permitted;
        EXPECT_EQ(preferences.set("a", 2), permitted >= 3) << permitted;
        const auto isNew = [&](const char* name) {
            return JsonPreferences(folder / name, JsonPreferences::Opening::toRead).integer("a")
                   == 2;
        };
        EXPECT_EQ(isNew("settings.json"), permitted >= 3) << permitted;
        EXPECT_EQ(isNew("settings.json.bak"), permitted >= 6) << permitted;
        EXPECT_EQ(test::namesIn(folder.path()), "settings.json settings.json.bak") << permitted;
    }
}

TEST(JsonPreferences, DoesNotWriteAFileThatItCouldNotRead) {
    const TemporaryFolder folder;
    const auto file = folder.write("settings.json", "{\"a\": 1}");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    {
        const test::OrdinaryUser user(folder.path());
        JsonPreferences preferences(file);
        EXPECT_TRUE(preferences.problem());
        EXPECT_EQ(preferences.integer("a"), std::nullopt);
        EXPECT_FALSE(preferences.note("b", true));
        EXPECT_EQ(preferences.boolean("b"), true) << "until the program ends";
    }
    EXPECT_EQ(test::contents(file), "{\"a\": 1}");
    EXPECT_EQ(test::namesIn(folder.path()), "settings.json");
}

TEST(JsonPreferences, UsesTheCopyInsteadOfADamagedFile) {
    const TemporaryFolder folder;
    const auto file = folder / "settings.json";
    JsonPreferences(file).set("recordingMode", std::string("paused"));
    JsonPreferences(file).set("flag", true);
    folder.write("settings.json", "{\"flag\": tr");
    for (const auto opening :
         {JsonPreferences::Opening::toRead, JsonPreferences::Opening::toWrite}) {
        const JsonPreferences preferences(file, opening);
        EXPECT_EQ(read(preferences, preferenceKeys::recordingMode), "paused");
        EXPECT_EQ(preferences.boolean("flag"), true);
        EXPECT_FALSE(preferences.isLost());
        EXPECT_NE(preferences.problem().value_or("").find("a copy of them is used"),
                  std::string::npos);
    }
    EXPECT_EQ(JsonPreferences(file).problem(), std::nullopt) << "the file was written again";

    // Changes that the user made in the file are copied at the next start.
    folder.write("settings.json", "{\"flag\": false}");
    JsonPreferences(file).boolean("flag");
    folder.write("settings.json", "{");
    EXPECT_EQ(JsonPreferences(file).boolean("flag"), false);
    std::filesystem::remove(file);
    EXPECT_EQ(JsonPreferences(file).problem(), std::nullopt)
        << "removing the file resets the settings";
}

TEST(JsonPreferences, KeepsANoteThatCouldNotBeStoredUntilTheNextChange) {
    const TemporaryFolder folder;
    const auto file = folder / "config/settings.json";
    folder.write("config", "a file in the way");
    JsonPreferences preferences(file);
    EXPECT_FALSE(preferences.note("a", true));
    EXPECT_TRUE(preferences.problem());
    EXPECT_FALSE(preferences.isStored());

    std::filesystem::remove(folder / "config");
    EXPECT_TRUE(preferences.set("b", true));
    EXPECT_EQ(preferences.problem(), std::nullopt);
    EXPECT_TRUE(preferences.isStored());
    EXPECT_EQ(JsonPreferences(file).boolean("a"), true);

    std::filesystem::remove_all(folder / "config");
    folder.write("config", "");
    EXPECT_FALSE(preferences.remove("a"));
    EXPECT_FALSE(preferences.remove("a")) << "still on the disk";
    std::filesystem::remove(folder / "config");
    EXPECT_TRUE(preferences.remove("a"));
    EXPECT_EQ(JsonPreferences(file).boolean("a"), std::nullopt);
}

TEST(JsonPreferences, KeepsTheOldValueWhenTheNewOneCannotBeStored) {
    const TemporaryFolder folder;
    const auto file = folder.write("config/settings.json", R"({"odd": [1, {"x": null}]})");
    JsonPreferences preferences(file);
    std::filesystem::remove_all(folder / "config");
    folder.write("config", "");
    EXPECT_FALSE(preferences.set("odd", true));
    EXPECT_FALSE(preferences.set("new", true));
    EXPECT_EQ(preferences.boolean("odd"), std::nullopt);
    EXPECT_EQ(preferences.boolean("new"), std::nullopt);
    std::filesystem::remove(folder / "config");
    EXPECT_TRUE(preferences.set("other", true));
    const std::string after = test::contents(file);
    EXPECT_NE(after.find("\"x\": null"), std::string::npos);
    EXPECT_EQ(after.find("new"), std::string::npos);
}

TEST(JsonPreferences, OpenedForReadingChangesNoFile) {
    using enum JsonPreferences::Opening;
    for (const char* bytes : {"{\"a\": 1}", "{\"a\": tr"}) {
        const TemporaryFolder folder;
        const auto file = folder.write("settings.json", bytes);
        JsonPreferences preferences(file, toRead);
        const bool isDamaged = !preferences.integer("a");
        EXPECT_EQ(preferences.problem(),
                  isDamaged ? std::optional<std::string>(
                                  "The settings are damaged, so the defaults are used.")
                            : std::nullopt);
        EXPECT_FALSE(preferences.note("a", true));
        EXPECT_EQ(preferences.boolean("a"), true);
        EXPECT_EQ(test::contents(file), bytes);
        EXPECT_EQ(test::namesIn(folder.path()), "settings.json");
    }
    const TemporaryFolder folder;
    JsonPreferences(folder / "none/settings.json", toRead).set("a", true);
    EXPECT_EQ(test::namesIn(folder.path()), "");
}

TEST(JsonPreferences, WritesThroughALink) {
    const TemporaryFolder folder;
    const auto real = folder.write("dotfiles/settings.json", "{}");
    std::filesystem::create_symlink(real, folder / "settings.json");
    JsonPreferences(folder / "settings.json").set("a", true);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "settings.json"));
    EXPECT_EQ(JsonPreferences(real).boolean("a"), true);
}

TEST(PreferenceKeys, LimitStoredValuesToAllowedOnes) {
    test::MemoryPreferences preferences;
    const std::pair<std::optional<PreferenceValue>, std::int64_t> cases[] = {
        {std::nullopt, 13}, {std::int64_t{40}, 26},  {std::int64_t{2}, 13}, {std::int64_t{20}, 20},
        {true, 13},         {std::string("20"), 13}, {INT64_MIN, 13}};
    for (const auto& [stored, textSize] : cases) {
        if (stored)
            preferences.set("listingTextSize", *stored);
        EXPECT_EQ(read(preferences, preferenceKeys::listingTextSize), textSize);
    }
    preferences.set("captureSchedule", std::string("fortnightly"));
    EXPECT_EQ(read(preferences, preferenceKeys::captureSchedule), "halfHourly");
    preferences.set("captureSchedule", std::string("daily"));
    EXPECT_EQ(read(preferences, preferenceKeys::captureSchedule), "daily");
    preferences.set("recordingMode", std::string("privateMode"));
    EXPECT_EQ(read(preferences, preferenceKeys::recordingMode), "paused");
    preferences.set("recordingMode", std::string());
    EXPECT_EQ(read(preferences, preferenceKeys::recordingMode), "recording");
}

TEST(FollowSettings, CallsOncePerChangeOfTheReadValue) {
    test::MemoryPreferences preferences;
    std::string log;
    {
        const QObject follower;
        followSettings(
            preferences, &follower,
            [&] { log += read(preferences, preferenceKeys::recordingMode); },
            preferenceKeys::recordingMode);
        followSettings(
            preferences, &follower, [&] { log += "folders"; }, preferenceKeys::memoryFiles,
            preferenceKeys::memoryFolders);
        const auto after = [&](const auto& change) {
            change();
            EXPECT_EQ(log, "") << "called later, from the event loop";
            test::settle();
            return std::exchange(log, {});
        };
        EXPECT_EQ(after([&] { preferences.set("recordingMode", std::string("privateMode")); }),
                  "paused");
        EXPECT_EQ(after([&] { preferences.note("recordingMode", std::string("paused")); }), "")
            << "read as the same value";
        EXPECT_EQ(after([&] { preferences.remove("recordingMode"); }), "recording");
        EXPECT_EQ(after([&] {
                      preferences.set("memoryFiles", false);
                      preferences.set("memoryFolders", std::vector<std::string>{"/a"});
                      preferences.set("memoryApps", false);
                  }),
                  "folders");
        preferences.refuses = true;
        EXPECT_EQ(after([&] { preferences.set("memoryFiles", true); }), "");
        preferences.refuses = false;
    }
    preferences.set("memoryFiles", true);
    test::settle();
    EXPECT_EQ(log, "") << "not called after the context was destroyed";
}

TEST(PreferenceKeys, AreListedOnceWithAnAllowedDefault) {
    std::set<std::string_view> names;
    for (const auto& any : preferenceKeys::all)
        std::visit(
            [&](const auto& key) {
                EXPECT_TRUE(names.insert(key.name).second) << key.name;
                EXPECT_FALSE(key.meaning.empty()) << key.name;
                const test::MemoryPreferences nothing;
                if constexpr (std::is_same_v<std::remove_cvref_t<decltype(key)>, TextKey>) {
                    EXPECT_TRUE(read(nothing, key).starts_with(key.fallback)) << key.name;
                } else if constexpr (requires { read(nothing, key) == key.fallback; }) {
                    EXPECT_EQ(read(nothing, key), key.fallback) << key.name;
                }
            },
            any);
}
