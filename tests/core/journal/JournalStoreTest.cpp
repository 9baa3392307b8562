#include "core/journal/JournalStore.h"

#include "core/base/Files.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "tests/support/Contains.h"
#include "tests/support/Failure.h"
#include "tests/support/Observations.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ResourceLimit.h"
#include "tests/support/SharedRecords.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <map>

#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr const char* incompleteBackup =
    "The pre-v2 history backup is incomplete. Your existing history has not been modified.";

/// A store with a current, a legacy and a backup location.
struct Place {
    test::TemporaryFolder folder;
    fs::path url = folder / "data/journal.json";
    fs::path legacy = folder / "legacy/old.json";
    fs::path backup = folder / "data/Backups/pre-v2";
    JournalStore store{url, legacy, backup};

    std::string failure() {
        return test::failureOf([&] { store.load(); });
    }
};

Journal small() {
    Journal journal;
    journal.snapshots = test::shared(test::snapshot(1));
    journal.lastChecked = Date{0.1 + 0.2};
    return journal;
}

Journal large(const std::string& name) {
    Journal journal;
    for (unsigned number = 0; number < 40; ++number) {
        Snapshot snapshot = test::snapshot(number);
        for (int i = 0; i < 400; ++i)
            test::add(snapshot.applications, test::application(name + std::to_string(i)));
        journal.snapshots.emplace_back(std::move(snapshot));
    }
    return journal;
}

} // namespace

TEST(JournalStore, LoadsAnEmptyJournalWithoutCreatingFiles) {
    Place place;
    EXPECT_EQ(place.store.load(), Journal());
    EXPECT_EQ(test::namesIn(place.folder.path()), "");
}

TEST(JournalStore, ReadsBackWhatItSavedWithPrivateModes) {
    Place place;
    const Journal journal = test::fullJournal();
    place.store.save(journal);
    EXPECT_EQ(test::modeOf(place.folder / "data"), 0700U);
    EXPECT_EQ(place.store.load(), journal);

    fs::permissions(place.folder / "data", fs::perms(0755));
    fs::permissions(place.url, fs::perms(0644));
    place.store.save(small());
    EXPECT_EQ(place.store.load(), small());
    EXPECT_EQ(test::modeOf(place.url), 0600U);
    EXPECT_EQ(test::modeOf(place.folder / "data"), 0755U) << "an existing folder keeps its mode";
}

TEST(JournalStore, DropsTheOldestSnapshotsOfAHistoryThatIsTooLarge) {
    const Place place;
    Journal journal = large("A");
    const Journal whole = journal;
    const std::size_t bytes = json::encoded(journal).size();
    JournalStore store(place.url);
    store.saveWithin(bytes, journal);
    EXPECT_EQ(journal, whole);
    store.saveWithin(bytes - 1, journal);
    EXPECT_EQ(journal.snapshots.size(), 30U);
    EXPECT_EQ(journal.snapshots.back(), whole.snapshots.back());
    EXPECT_EQ(store.load(), journal);
    EXPECT_THROW(store.saveWithin(1'000, journal), FileError);
    EXPECT_EQ(journal.snapshots.size(), 2U);
}

TEST(JournalStore, MakesABackupOnceBeforeTheFirstUse) {
    Place place;
    const std::string bytes = " " + json::encoded(small()) + "\n";
    place.folder.write("data/journal.json", bytes);
    place.folder.write("data/system-activity.json", "[1]");
    EXPECT_EQ(place.store.load(), small());

    EXPECT_EQ(test::namesIn(place.backup), "complete.json journal.json system-activity.json");
    EXPECT_EQ(test::contents(place.backup / "journal.json"), bytes);
    EXPECT_EQ(test::contents(place.backup / "system-activity.json"), "[1]");
    EXPECT_EQ(test::contents(place.backup / "complete.json"),
              R"(["journal.json","system-activity.json"])");
    for (const char* name : {"journal.json", "system-activity.json", "complete.json"})
        EXPECT_EQ(test::modeOf(place.backup / name), 0600U) << name;
    for (const fs::path& made : {place.backup, place.backup.parent_path()})
        EXPECT_EQ(test::modeOf(made), 0700U) << made;
    EXPECT_EQ(test::namesIn(place.backup.parent_path()), "pre-v2") << "no temporary folder is left";
    EXPECT_EQ(test::contents(place.url), bytes) << "loading does not write";

    place.store.save(Journal());
    place.store.load();
    EXPECT_EQ(test::contents(place.backup / "journal.json"), bytes) << "made once";
}

TEST(JournalStore, MovesTheHistoryOfAnEarlierRelease) {
    Place place;
    const std::string bytes = json::encoded(small()) + " ";
    place.folder.write("legacy/old.json", bytes);
    place.folder.write("legacy/storage-measurements.json", "m");
    place.folder.write("data/system-activity.json", "not beside the source");
    EXPECT_EQ(place.store.load(), small());
    EXPECT_EQ(test::contents(place.backup / "complete.json"),
              R"(["old.json","storage-measurements.json"])");
    EXPECT_EQ(test::contents(place.backup / "old.json"), bytes);
    EXPECT_EQ(test::contents(place.legacy), bytes);
    EXPECT_EQ(json::decode<Journal>(test::contents(place.url)), small());

    place.folder.write("legacy/old.json", "ignored from now on");
    EXPECT_EQ(place.store.load(), small());
}

TEST(JournalStore, StopsAtAnIncompleteBackup) {
    Place place;
    place.folder.write("data/journal.json", json::encoded(small()));
    place.folder.write("data/Backups/pre-v2/journal.json", "half");
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(place.failure(), incompleteBackup);
    EXPECT_EQ(test::namesIn(place.backup), "journal.json");
    EXPECT_EQ(test::contents(place.url), json::encoded(small()));
}

TEST(JournalStore, RemovesABackupThatFailed) {
    Place place;
    place.folder.write("data/journal.json", json::encoded(small()));
    place.folder.makeFolder("data/storage-measurements.json");
    EXPECT_EQ(place.failure(), (place.folder / "data/storage-measurements.json").native()
                                   + " could not be read: Is a directory.");
    EXPECT_EQ(test::namesIn(place.backup.parent_path()), "");
    EXPECT_EQ(test::contents(place.url), json::encoded(small()));
    fs::remove(place.folder / "data/storage-measurements.json");
    EXPECT_EQ(place.failure(), "none");
}

TEST(JournalStore, KeepsTheEarlierDocumentWhenItCannotBeMoved) {
    Place place;
    place.folder.write("legacy/old.json", json::encoded(small()));
    place.folder.makeFolder("data");
    place.folder.write("data/Backups/pre-v2/complete.json", "[]");
    const test::OrdinaryUser user(place.folder.path());
    EXPECT_TRUE(test::contains(place.failure(), "could not be written: Permission denied."));
    EXPECT_EQ(test::contents(place.legacy), json::encoded(small()));
    EXPECT_FALSE(fs::exists(place.url));
}

TEST(JournalStore, LeavesDamagedDocumentsUnchanged) {
    const fs::path corpus = fs::path(TIDEMARK_FIXTURES) / "hostile-journals";
    for (const auto& hostile : fs::directory_iterator(corpus)) {
        const std::string bytes = test::contents(hostile);
        const bool isNewer = hostile.path().stem() == "version-2";
        const std::string reason =
            isNewer ? " is of version 2, which this release can't read." : " could not be read: ";
        for (const bool isLegacy : {false, true}) {
            Place place;
            const fs::path file =
                place.folder.write(isLegacy ? "legacy/old.json" : "data/journal.json", bytes);
            EXPECT_TRUE(place.failure().starts_with(file.native() + reason)) << hostile.path();
            EXPECT_EQ(test::contents(file), bytes) << hostile.path();
            EXPECT_EQ(test::namesIn(file.parent_path()), file.filename().native());
            EXPECT_FALSE(fs::exists(place.backup.parent_path()));
        }
    }
    Place place;
    place.folder.write("data/journal.json", test::contents(corpus / "version-2.json"));
    EXPECT_THROW(place.store.load(), JournalStore::StoreError);
}

TEST(JournalStore, LeavesUnreadableDocumentsUnchanged) {
    Place place;
    place.folder.makeFolder("data/journal.json");
    EXPECT_EQ(place.failure(), place.url.native() + " could not be read: Is a directory.");
    EXPECT_THROW(place.store.save(small()), FileError);
    EXPECT_EQ(test::namesIn(place.folder / "data"), "journal.json");

    fs::remove(place.url);
    place.folder.write("data/journal.json", json::encoded(small()));
    fs::permissions(place.url, fs::perms(0));
    {
        const test::OrdinaryUser user(place.folder.path());
        EXPECT_EQ(place.failure(), place.url.native() + " could not be read: Permission denied.");
    }
    fs::permissions(place.folder / "data", fs::perms(0));
    const test::OrdinaryUser user(place.folder.path());
    EXPECT_EQ(place.failure(), place.url.native() + " could not be inspected: Permission denied.")
        << "a failure to look does not mean absence";
}

TEST(JournalStore, KeepsTheOldDocumentWhenTheDiskIsFull) {
    Place place;
    place.store.save(small());
    {
        const test::ResourceLimit disk(RLIMIT_FSIZE, 1 << 20);
        EXPECT_EQ(test::failureOf([&] { place.store.save(large("A")); }),
                  place.url.native() + " could not be written: File too large.");
    }
    EXPECT_EQ(place.store.load(), small());
    EXPECT_EQ(test::namesIn(place.folder / "data"), "Backups journal.json");
}

TEST(JournalStore, SurvivesBeingKilledInTheMiddleOfASave) {
    const test::TemporaryFolder folder;
    JournalStore store(folder / "journal.json", {}, folder / "Backups/pre-v2");
    const Journal versions[] = {large("A"), large("B")};
    store.save(versions[0]);
    const auto isHalfWritten = [&] {
        std::error_code gone;
        return std::ranges::any_of(fs::directory_iterator(folder.path()), [&](const auto& entry) {
            return entry.path().filename().native().starts_with(".") && entry.file_size(gone) > 0
                   && !gone;
        });
    };
    for (int round = 0; round < 20; ++round) {
        const pid_t child = ::fork();
        if (child == 0)
            for (int i = 0;; ++i)
                store.save(versions[i % 2]);
        while (!isHalfWritten())
            ::sched_yield();
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const Journal read = store.load();
        ASSERT_TRUE(read == versions[0] || read == versions[1]);
        ASSERT_EQ(test::namesIn(folder.path()), "Backups journal.json");
    }
}

TEST(JournalStore, RemovesNothingWithoutTheLockOfTheFolder) {
    const test::TemporaryFolder folder;
    folder.write("journal.json", json::encoded(small()));
    folder.write(".journal.json.new-0A000000-0000-4000-8000-00000000000A", "half");
    const auto names = test::namesIn(folder.path());
    EXPECT_EQ(JournalStore(folder / "journal.json").load(), small());
    const FolderGuard refused([] { return false; });
    JournalStore store(folder / "journal.json", {}, folder / "Backups/pre-v2", refused);
    EXPECT_THROW(store.load(), Error);
    EXPECT_EQ(test::namesIn(folder.path()), names);
}

TEST(JournalStore, RemovesIncompleteFilesAndBackupsOfKilledProcesses) {
    Place place;
    place.folder.write("disk/journal.json", json::encoded(small()));
    place.folder.write("disk/.journal.json.new-0A000000-0000-4000-8000-00000000000A", "half");
    place.folder.makeFolder("data");
    fs::create_symlink(place.folder / "disk/journal.json", place.url);
    const std::string left = "data/Backups/.pre-v2-0A000000-0000-4000-8000-00000000000";
    place.folder.write(left + "A/journal.json", "half");
    place.folder.write(left + "B", "no folder");
    place.folder.write("data/Backups/.pre-v2-notes/mine", "kept");
    place.folder.write("data/Backups/my-copy-0A000000-0000-4000-8000-00000000000E/mine", "kept");
    fs::create_directory_symlink(place.folder / "data", place.folder / (left + "C"));
    for (int start = 0; start < 2; ++start) {
        EXPECT_EQ(place.failure(), "none");
        EXPECT_EQ(test::namesIn(place.folder / "disk"), "journal.json");
        EXPECT_EQ(test::namesIn(place.backup.parent_path()),
                  ".pre-v2-0A000000-0000-4000-8000-00000000000B "
                  ".pre-v2-0A000000-0000-4000-8000-00000000000C .pre-v2-notes "
                  "my-copy-0A000000-0000-4000-8000-00000000000E pre-v2");
        place.folder.write(left + "D/journal.json", "of a kill after the backup was made");
    }
}
