#include "core/base/JsonEncoder.h"
#include "core/journal/Journal.h"
#include "core/memory/MemoryHistoryStore.h"
#include "tests/cli/RecorderProgram.h"
#include "tests/support/Observations.h"
#include "tests/support/OrdinaryUser.h"

#include <unistd.h>

using namespace tidemark;
using test::Outcome;
using test::RecorderProgram;
using test::Words;

namespace {

void writeClips(const std::filesystem::path& data, const Words& names) {
    MemoryArchive archive;
    for (const auto& name : names) {
        auto clip = MemoryRecord::make(MemoryRecord::Kind::clipboard, Date::now(), name);
        clip.id = "CLIP-" + name;
        clip.text = name;
        archive.records.emplace_back(std::move(clip));
    }
    MemoryHistoryStore store(data / "memory-history.json");
    store.load();
    store.save(archive);
}

} // namespace

TEST_F(RecorderProgram, CarriesOutCommandsWithoutARecorder) {
    EXPECT_EQ(command({"folders", "add", monitored()}).out, "Monitoring " + monitored() + ".\n");
    EXPECT_EQ(command({"capture"}).status, 0);
    grow(4);
    const Outcome second = command({"capture"});
    EXPECT_TRUE(test::contains(second.out, "Stuff Grew in Size"));
    EXPECT_EQ(second.err, "");
    EXPECT_TRUE(test::contains(command({"timeline"}).out, "+3 GB · part +3 GB"));
    EXPECT_EQ(command({"timeline", "--limit", "0"}).out, "The filters leave no event to show.\n");
    EXPECT_TRUE(test::contains(command({"status"}).out, "Captures kept   2"));

    command({"folders", "track", monitored(), "storage", "off"});
    EXPECT_TRUE(test::contains(command({"folders"}).out, "for nothing"));
    EXPECT_EQ(command({"pause"}).status, 0);
    const Outcome refused = command({"capture"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(test::contains(refused.err, "Recording is paused"));
    EXPECT_EQ(test::modeOf(folder / "data/Tidemark/journal.json"), 0600U);
    EXPECT_EQ(test::modeOf(folder / "config/Tidemark/settings.json"), 0600U);
}

TEST_F(RecorderProgram, RefusesInvalidArguments) {
    const std::tuple<Words, int, const char*> cases[] = {
        {{"settings", "set", "listingTextSize", "40"}, 1, "no whole number from 13 to 26"},
        {{"settings", "set", "memoryClipboard", "maybe"}, 1, "neither on nor off"},
        {{"settings", "get", "needsRecordingBaseline"}, 1, "There is no setting"},
        {{"folders", "remove", "/nowhere"}, 1, "is not monitored"},
        {{"folders", "add", "/nowhere"}, 1, "/nowhere can't be monitored: Folder does not "},
        {{"folders", "add", "/etc/passwd"}, 1, "This location is not a folder."},
        {{"settings", "set", "memoryFolders", "/na\xFFme"}, 2, "not UTF-8"},
        {{"settings", "set",
          "memory\xFF"
          "Apps",
          "on"},
         2,
         "not UTF-8"},
        {{"schedule", "often"}, 2, "often"},
        {{"timeline", "--since", "3x"}, 2, "--since: \"3x\" is no time"},
        {{"export", "--format", "csv", "--since", "2026-02-30"}, 2, "is no time"},
        {{"chart", "--since", "foo"}, 2, "is no time"},
        {{"chart", "--since", "1e308w"}, 2, "is no time"},
        {{"coverage", "--since", "foo"}, 2, "is no time"},
        {{"digest", "--since", "foo"}, 2, "is no time"},
        {{"grew", "--since", "foo"}, 2, "is no time"},
        {{"export", "--sizes", "--format", "csv", "--place", "files"},
         2,
         "--sizes can't be given together with --place"},
        {{"timeline", "--window", "9z"}, 2, "9z"},
        {{"timeline", "--limit", "-1"}, 2, "from 0"},
        {{"timeline", "--limit", "1x"}, 2, "whole number"},
        {{"timeline", "--since", "7d", "--window", "day"}, 2, "together"},
        {{"folders", "add", ""}, 2, "can't be empty"},
        {{"snapshot", "delete"}, 2, "NAME"},
        {{"snapshot", "burn", "A"}, 2, "burn"},
    };
    for (const auto& [words, status, says] : cases) {
        const Outcome outcome = command(words);
        EXPECT_EQ(outcome.status, status) << words.front();
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(test::contains(outcome.err, says));
    }
    EXPECT_TRUE(command({"settings", "get", "listingTextSize"}).out.starts_with("13\n"));
}

TEST_F(RecorderProgram, PinsAndDeletesClips) {
    writeClips(folder / "data/Tidemark", {"one", "two"});
    const auto isPinned = [&] {
        return command({"memory", "--json"}).out.contains("\"pinned\":true");
    };
    EXPECT_EQ(command({"clips", "pin", "CLIP-one"}).out,
              "\"one\" is pinned; it does not expire.\n");
    EXPECT_TRUE(isPinned());
    EXPECT_EQ(command({"clips", "pin", "memory-CLIP-one", "--off"}).out,
              "\"one\" is pinned no longer.\n");
    EXPECT_FALSE(isPinned());
    const std::pair<Words, const char*> refused[] = {
        {{"clips", "pin", "CLIP"}, "2 clips have \"CLIP\""},
        {{"clips", "pin", "three"}, "No clip has the identifier \"three\"."},
        {{"clips", "copy", "CLIP-two"}, "No recorder is running"},
        {{"clips", "clear"}, "--yes"},
    };
    for (const auto& [words, says] : refused)
        EXPECT_TRUE(test::contains(command(words).err, says));
    startRecording();
    EXPECT_TRUE(test::contains(command({"clips", "copy", "CLIP-two"}).err,
                               "runs outside of a graphical session"));
    EXPECT_EQ(command({"clips", "clear", "--yes"}).status, 0);
    EXPECT_EQ(command({"memory"}).out, "Nothing has been remembered.\n");
}

TEST_F(RecorderProgram, MarksSettingsWhoseSourceIsNotAvailable) {
    if (std::filesystem::exists("/home/linuxbrew/.linuxbrew/Cellar"))
        GTEST_SKIP() << "this machine has every source that can be missing";
    const char* const missing = "homebrewHistoryEnabled";
    EXPECT_TRUE(test::contains(command({"settings", "get", missing}).out,
                               "Not available here: Homebrew is not installed."));
    EXPECT_TRUE(test::contains(command({"settings", "get", missing, "--json"}).out,
                               "\"notAvailable\":\"Homebrew is not installed.\""));
    EXPECT_EQ(command({"settings", "get", "captureSchedule"}).out, "halfHourly\n");
    EXPECT_TRUE(test::contains(command({"settings"}).out,
                               "(not available here: Homebrew is not installed.)\n"));
    for (const char* key : {"appearanceMode", "networkHistoryEnabled", "memoryFiles"})
        EXPECT_FALSE(test::contains(command({"settings", "get", key}).out, "Not available"));
    EXPECT_EQ(test::contains(command({"settings", "get", "wifiNetworkNamesEnabled"}).out,
                             "Not available here: NetworkManager"),
              !std::filesystem::exists("/usr/sbin/NetworkManager"));
    EXPECT_FALSE(test::contains(command({"settings"}).out, "This release can’t"))
        << "each live source of a setting has a monitor or a collector on this system";
    EXPECT_TRUE(test::contains(command({"settings", "--json"}).out, "\"key\":\"captureSchedule\""));
    more = {"DBUS_SESSION_BUS_ADDRESS=", "DISPLAY=other-machine:0", "WAYLAND_DISPLAY="};
    const std::pair<const char*, const char*> withoutSession[] = {
        {"backgroundItemNotices", "There is no session of a desktop"},
        {"memoryApps", "There is neither a service manager of this user nor a graphical session"},
        {"memoryClipboard", "The clipboard can’t be watched: there is no graphical session."},
    };
    for (const auto& [key, why] : withoutSession)
        EXPECT_TRUE(test::contains(command({"settings", "get", key}).out, why)) << key;
}

TEST_F(RecorderProgram, ReportsDamagedSettingsAndKeepsAPause) {
    EXPECT_EQ(command({"pause"}).status, 0);
    for (const char* copy : {"kept", "damaged"}) {
        if (copy == std::string_view("damaged"))
            folder.write("config/Tidemark/settings.json.bak", "{");
        folder.write("config/Tidemark/settings.json", "{\"recordingMode\":");
        const std::string said = command({"settings", "get", "recordingMode"}).out;
        EXPECT_TRUE(said.starts_with("paused\n")) << copy << said;
        EXPECT_TRUE(test::contains(said, "The settings are damaged")) << copy;
        const Outcome refused = command({"capture"});
        EXPECT_TRUE(test::contains(refused.err, "Recording is paused"));
        EXPECT_EQ(command({"settings", "get", "recordingMode"}).out, "paused\n");
    }
}

TEST_F(RecorderProgram, DoesNotStoreARefusedSettingWithALaterOne) {
    startRecording();
    const auto settings = folder / "config/Tidemark";
    std::filesystem::rename(settings, folder / "moved");
    folder.write("config/Tidemark", "in the way");
    EXPECT_EQ(command({"settings", "set", "listingTextSize", "20"}).status, 1);
    EXPECT_EQ(command({"schedule", "daily"}).status, 1);
    EXPECT_EQ(command({"pause"}).status, 1);
    std::filesystem::remove(settings);
    std::filesystem::rename(folder / "moved", settings);
    EXPECT_EQ(command({"settings", "set", "historyCustomWindowDays", "5"}).status, 0);
    const std::string stored = test::contents(settings / "settings.json");
    EXPECT_TRUE(test::contains(stored, "\"historyCustomWindowDays\": 5"));
    EXPECT_FALSE(test::contains(stored, "listingTextSize"));
    EXPECT_FALSE(test::contains(stored, "daily"));
    EXPECT_TRUE(test::contains(stored, "\"recordingMode\": \"paused\""))
        << "a pause takes effect and is stored as soon as possible: ";
}

TEST_F(RecorderProgram, CarriesOutCommandsOfOtherProcessesAndEndsCleanly) {
    startRecording();
    const Outcome second = command({"run"});
    EXPECT_EQ(second.status, 1);
    EXPECT_TRUE(test::contains(second.err, "already recording"));

    grow(4);
    EXPECT_TRUE(test::contains(command({"capture"}).out, "Stuff Grew in Size"));
    EXPECT_EQ(command({"schedule", "hourly"}).out, "hourly: Every hour\n");
    const std::string status = command({"status", "--json"}).out;
    EXPECT_TRUE(test::contains(status, "\"running\":true"));
    EXPECT_TRUE(test::contains(status, "\"snapshots\":2"));
    EXPECT_TRUE(test::contains(status, "{\"name\":\"Battery\",\"text\":\""));
    EXPECT_EQ(command({"folders", "remove", "/nowhere"}).status, 1);
    more = {"XDG_RUNTIME_DIR=" + stuff.native()};
    EXPECT_TRUE(
        test::contains(command({"status"}).out, "State           No recorder answers, but "));
    EXPECT_EQ(stop(SIGTERM), 0);
    EXPECT_TRUE(test::contains(command({"status"}).out, "No recorder runs"));
}

TEST_F(RecorderProgram, SaysWhenTheNextCaptureIsDue) {
    const auto next = [&] {
        const std::string status = command({"status"}).out;
        const auto start = status.find("Next capture    ") + 16;
        EXPECT_TRUE(test::contains(command({"doctor"}).out,
                                   "Next capture              "
                                       + status.substr(start, status.find('\n', start) - start)));
        return status.substr(start, status.find('\n', start) - start);
    };
    EXPECT_EQ(next(), "Not before a recorder runs (tidemark run)");
    startRecording();
    EXPECT_TRUE(next().starts_with("20") || next().contains(" 20"));
    EXPECT_EQ(command({"pause"}).status, 0);
    EXPECT_EQ(next(), "Not before recording goes on (tidemark resume)");
    EXPECT_FALSE(test::contains(command({"status", "--json"}).out, "nextCapture"));
    EXPECT_EQ(stop(SIGTERM), 0);
    EXPECT_EQ(next(), "Not before recording goes on (tidemark resume)");
    EXPECT_TRUE(test::contains(command({"resume"}).out, "when a recorder runs"));
}

TEST_F(RecorderProgram, KeepsTheSavedHistoryWhenItIsKilled) {
    startRecording();
    EXPECT_EQ(stop(SIGKILL), -1);
    grow(4);
    const Outcome next = command({"capture"});
    EXPECT_EQ(next.status, 0) << next.err;
    EXPECT_TRUE(test::contains(next.out, "Stuff Grew in Size"));
}

TEST_F(RecorderProgram, ReportsNoChangeForAFolderThatItCannotRead) {
    command({"folders", "add", monitored()});
    grow(9);
    command({"capture"});
    const auto capturesNothing = [&] {
        const Outcome outcome = command({"capture"});
        EXPECT_TRUE(test::contains(outcome.out, "Nothing changed"));
    };
    const auto hidden = folder / "hidden";
    const auto place = folder / "Stuff";
    const auto captureWithout = [&](const auto& makeReplacement) {
        std::filesystem::rename(place, hidden);
        makeReplacement();
        capturesNothing();
        EXPECT_TRUE(test::contains(command({"coverage"}).out, place.native()));
        std::filesystem::remove(place);
        std::filesystem::rename(hidden, place);
        capturesNothing();
    };
    captureWithout([] {});
    captureWithout([&] { folder.write("Stuff", ""); });
    captureWithout([&] { std::filesystem::create_directory_symlink(folder / "run", place); });
    grow(4);
    EXPECT_TRUE(test::contains(command({"capture"}).out, "Stuff Shrank in Size"));
}

TEST_F(RecorderProgram, ReportsMissingPermissions) {
    command({"folders", "add", monitored()});
    command({"capture"});
    const auto data = folder / "data/Tidemark";
    const auto journal = data / "journal.json";
    const std::string before = test::contents(journal);
    const bool isRoot = ::geteuid() == 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
        EXPECT_TRUE(!isRoot || ::lchown(entry.path().c_str(), 65534, 65534) == 0);
    std::filesystem::permissions(data, std::filesystem::perms(0500));
    const auto fails = [&](const char* word) {
        const Outcome outcome = command({word});
        EXPECT_EQ(outcome.status, 1) << word;
        EXPECT_TRUE(test::contains(outcome.err, "Permission denied"));
    };
    {
        const test::OrdinaryUser user(folder.path());
        fails("capture");
        EXPECT_TRUE(test::contains(command({"status"}).out, "Captures kept   1"));
        EXPECT_TRUE(test::contains(command({"doctor"}).out,
                                   "  The data folder can't be written: Permission denied.\n"));
    }
    if (isRoot) {
        EXPECT_EQ(::lchown(journal.c_str(), 0, 0), 0);
        const test::OrdinaryUser user(folder.path());
        fails("capture");
        fails("status");
    }
    EXPECT_EQ(test::contents(journal), before);
}

TEST_F(RecorderProgram, ReportsUnreadableSettingsOnce) {
    folder.makeFolder("config/Tidemark/settings.json");
    const std::string reason = "settings.json could not be read: Is a directory.";
    for (const Words& words : {Words{"settings", "set", "listingTextSize", "20"},
                               Words{"folders", "add", monitored()}, Words{"capture"}}) {
        const std::string error = command(words).err;
        EXPECT_TRUE(test::contains(error, reason));
        EXPECT_EQ(error.find(reason), error.rfind(reason)) << error;
    }
}

TEST_F(RecorderProgram, ReportsUnreadableFilesNextToTheHistory) {
    command({"folders", "add", monitored()});
    command({"capture"});
    const Words files{"system-activity.json", "memory-history.json"};
    for (const auto& file : files)
        folder.write("data/Tidemark/" + file, "{]");
    for (const char* name : {"status", "timeline"}) {
        const Outcome outcome = command({name});
        for (const auto& file : files)
            EXPECT_TRUE(test::contains((outcome.out + outcome.err), file)) << name << file;
    }
    EXPECT_EQ(command({"activity"}).status, 1);
    EXPECT_EQ(command({"memory"}).status, 1);
    for (const auto& file : files)
        EXPECT_EQ(test::contents(folder / "data/Tidemark" / file), "{]");
}

TEST_F(RecorderProgram, ReportsNoGapsForCapturesInTheFuture) {
    const auto coverageOf = [&](const std::vector<Date>& captures, const Words& filter = {}) {
        Journal journal;
        for (std::size_t i = 0; i < captures.size(); ++i) {
            Snapshot snapshot = test::snapshot(static_cast<unsigned>(i));
            snapshot.timestamp = captures[i];
            journal.snapshots.emplace_back(std::move(snapshot));
        }
        folder.write("data/Tidemark/journal.json", json::encoded(journal));
        Words words{"coverage"};
        words.insert(words.end(), filter.begin(), filter.end());
        Words variables = environment();
        variables.emplace_back("TZ=CET-1CEST,M3.5.0,M10.5.0/3");
        return test::run(words, test::Output::file, variables).out;
    };
    const Date now = Date::now();
    const Date early{600'000'000};
    EXPECT_EQ(coverageOf({now + -60}), "Every place was seen at every capture that was due.\n");
    EXPECT_EQ(coverageOf({now + -60, Date{4'000'000'000}}),
              "Not judged  1 capture, which is dated 4 Oct 2127, 09:06:40, in the future\n");
    EXPECT_EQ(coverageOf({Date{4'000'000'000}, Date{3'999'999'000}}),
              "Not judged  2 captures, dated up to 4 Oct 2127, 09:06:40, in the future\n");
    EXPECT_EQ(coverageOf({now}, {"--since", "2127-10-04"}), "That time has not come yet.\n");
    EXPECT_EQ(coverageOf({early}, {"--since", "2020-06-01"}),
              "No capture  1 Jun 2020, 00:00:00 – now\n");
}

TEST_F(RecorderProgram, WritesNothingToADataFolderThatWasReplaced) {
    const auto data = folder / "data/Tidemark";
    writeClips(data, {"one"});
    startRecording();
    std::filesystem::rename(data, folder / "moved");
    const auto refuses = [&](const Words& words) {
        const Outcome refused = command(words);
        EXPECT_EQ(refused.status, 1);
        EXPECT_TRUE(test::contains(refused.err, "removed or replaced"));
    };
    refuses({"capture"});
    EXPECT_FALSE(std::filesystem::exists(data));
    std::filesystem::create_directory(data);
    const std::string settings = test::contents(folder / "config/Tidemark/settings.json");
    refuses({"capture"});
    refuses({"settings", "set", "listingTextSize", "20"});
    command({"clips", "pin", "CLIP-one"});
    EXPECT_EQ(stop(SIGTERM), 0);
    EXPECT_EQ(test::namesIn(data), "");
    EXPECT_EQ(test::contents(folder / "config/Tidemark/settings.json"), settings);
}

TEST_F(RecorderProgram, LeavesAnUnreadableHistoryUnchanged) {
    command({"folders", "add", monitored()});
    const auto journal = folder.write("data/Tidemark/journal.json", "{\"schemaVersion\":2");
    const Outcome outcome = command({"capture"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(test::contains(outcome.err, "Your existing file has not been overwritten."));
    EXPECT_EQ(test::contents(journal), "{\"schemaVersion\":2");
}
