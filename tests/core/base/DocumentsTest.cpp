#include "core/base/Documents.h"

#include "core/activity/SystemActivityStore.h"
#include "core/base/FolderLock.h"
#include "core/growth/StorageHistoryStore.h"
#include "core/journal/JournalStore.h"
#include "core/memory/MemoryHistoryStore.h"
#include "core/storage/MeasurementCache.h"
#include "tests/support/Contains.h"
#include "tests/support/Failure.h"
#include "tests/support/Observations.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
namespace fs = std::filesystem;
using test::failureOf;

namespace {

MemoryArchive archiveWithAClip() {
    MemoryRecord clip;
    clip.id = "clip";
    clip.kind = MemoryRecord::Kind::clipboard;
    clip.text = "words";
    MemoryArchive archive;
    archive.records.emplace_back(std::move(clip));
    return archive;
}

/// Calls by which classes write to a data folder, each with the path that is passed to it: a
/// document, or a name in the folder of the payloads or of the backups.
const struct Writer {
    std::string document;
    std::function<void(const fs::path&, const FolderGuard&)> write;
} writers[] = {
    {"journal.json",
     [](const fs::path& file, const FolderGuard& guard) {
         JournalStore(file, {}, {}, guard).save(Journal());
     }},
    {"system-activity.json",
     [](const fs::path& file, const FolderGuard& guard) {
         SystemActivityStore(file, guard).append(SystemActivity::observed({}, Date{1}));
     }},
    {"memory-history.json",
     [](const fs::path& file, const FolderGuard& guard) {
         MemoryHistoryStore store(file, guard);
         store.load();
         store.save(archiveWithAClip());
     }},
    {"storage-measurements.json",
     [](const fs::path& file, const FolderGuard& guard) {
         StorageMeasurementItem item;
         item.path = "/a";
         StorageMeasurementRecord record;
         record.item.emplace(std::move(item));
         MeasurementCache cache(file, guard);
         cache.store(Shared(std::move(record)), 0);
         cache.save();
     }},
    {"storage-history.json",
     [](const fs::path& file, const FolderGuard& guard) {
         StorageHistoryStore(file, guard).save({});
     }},
    {"memory-payloads/made",
     [](const fs::path& file, const FolderGuard& guard) {
         MemoryPayloads(file.parent_path(), guard).prepare();
     }},
    {"memory-payloads/written",
     [](const fs::path& file, const FolderGuard& guard) {
         MemoryPayloads(file.parent_path(), guard).write("written", "x");
     }},
    {"memory-payloads/deleted",
     [](const fs::path& file, const FolderGuard& guard) {
         MemoryPayloads(file.parent_path(), guard).keepOnly({});
     }},
    {"Backups/pre-v2",
     [](const fs::path& file, const FolderGuard& guard) {
         const auto old = file.parent_path().parent_path().parent_path() / "old.json";
         JournalStore(file.parent_path().parent_path() / "journal.json", old, file, guard).load();
     }},
};

/// All paths below a folder.
std::set<std::string> pathsBelow(const fs::path& folder) {
    std::set<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        paths.insert(entry.path().lexically_relative(folder).native());
    return paths;
}

} // namespace

TEST(Documents, AreWrittenToTheTargetOfALink) {
    for (const auto& [document, write] : writers) {
        if (!document.ends_with(".json"))
            continue;
        const test::TemporaryFolder folder;
        const auto real = folder / "disk/real.json";
        const auto link = folder / ("data/" + document);
        folder.makeFolder("data");
        fs::create_symlink(real, link);
        EXPECT_TRUE(
            test::contains(failureOf([&] { write(link, {}); }), "No such file or directory."))
            << "a link without a target";
        EXPECT_FALSE(fs::exists(folder / "disk"));

        fs::remove(link);
        write(link, {});
        fs::create_directory(folder / "disk");
        fs::rename(link, real);
        fs::create_symlink(real, link);
        fs::permissions(real, fs::perms(0644));
        EXPECT_EQ(failureOf([&] { write(link, {}); }), "none") << document;
        EXPECT_TRUE(fs::is_symlink(link)) << document;
        EXPECT_EQ(test::modeOf(real), 0600U) << "replaced";
        EXPECT_EQ(test::namesIn(folder / "disk"), "real.json");

        fs::remove(real);
        ::mkfifo(real.c_str(), 0600);
        EXPECT_EQ(failureOf([&] { writeDocument(link, Journal()); }),
                  link.native() + " is not a regular file.");
    }
}

TEST(Documents, AreLimitedToTwoGigabytes) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("journal.json", "");
    fs::resize_file(file, 15'000'000'000'000);
    const std::string sentence =
        file.native() + " could not be read: it has more than 2 GB, the most a document may have.";
    EXPECT_EQ(failureOf([&] { JournalStore(file).load(); }), sentence);
    EXPECT_EQ(failureOf([&] { readDocument<Journal>(file); }), sentence);

    fs::resize_file(file, 0);
    const std::vector<std::string> record{"twelve bytes"};
    writeDocument(file, record, {}, 16);
    EXPECT_THROW(writeDocument(file, record, {}, 15), FileError);
    EXPECT_EQ(readDocument<std::vector<std::string>>(file), record);
    EXPECT_EQ(test::namesIn(folder.path()), "journal.json");
}

TEST(FolderGuard, StopsEveryWriterOnceTheFolderWasRemovedOrReplaced) {
    for (const auto& [document, write] : writers)
        for (const bool isReplaced : {false, true}) {
            const test::TemporaryFolder folder;
            folder.write("old.json", json::encoded(Journal()));
            const auto data = folder.makeFolder("data");
            auto lock = FolderLock::take(data);
            ASSERT_TRUE(lock);
            const FolderGuard guard = lock->guard();
            EXPECT_NO_THROW(guard.require());
            fs::rename(data, folder / "moved");
            if (isReplaced)
                folder.write("data/memory-payloads/theirs", "x");
            const auto before = pathsBelow(folder.path());
            EXPECT_NE(failureOf([&] { write(data / document, guard); }), "none")
                << document << isReplaced;
            EXPECT_EQ(pathsBelow(folder.path()), before) << document << isReplaced;
        }
}

TEST(FolderGuard, IsCheckedAgainBeforeAFileIsReplaced) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("document.json", "old");
    bool isOwn = true;
    FileReplacement replacement(file, FolderGuard([&] { return isOwn; }));
    replacement.write("new");
    isOwn = false;
    EXPECT_THROW(replacement.commit(), Error);
    EXPECT_EQ(test::contents(file), "old");
}

TEST(FolderGuard, RefusesAfterTheLockIsReleased) {
    const test::TemporaryFolder folder;
    auto lock = FolderLock::take(folder.path());
    const FolderGuard guard = lock->guard();
    {
        const FolderLock moved = std::move(*lock);
        EXPECT_NO_THROW(guard.require());
    }
    EXPECT_THROW(guard.require(), Error);
}
