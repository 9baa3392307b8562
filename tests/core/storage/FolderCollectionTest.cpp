#include "core/storage/ComponentStorageScanner.h"
#include "core/storage/FolderContents.h"
#include "core/storage/StorageMeasurementError.h"
#include "tests/support/ManualClock.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::ManualClock;
using test::TemporaryFolder;
namespace fs = std::filesystem;
using Failure = StorageMeasurementFailure;
using Sizes = std::map<std::string, std::int64_t>;

namespace {

struct FolderCollection : testing::Test {
    TemporaryFolder folder;
    ManualClock clock;
    ComponentStorageScanner scanner{{}, 1'000'000, clock};

    std::optional<Failure> failureOf(const fs::path& root, const std::stop_token& stop = {}) {
        try {
            scanner.collectFolder(root, 10, stop);
            return std::nullopt;
        } catch (const StorageMeasurementError& error) {
            EXPECT_EQ(error.what(), rawValue(error.failure()));
            return error.failure();
        }
    }
};

} // namespace

TEST_F(FolderCollection, ListsFilesNowAndMeasuresSubfolders) {
    folder.write("root/one", "12345");
    folder.write("root/.DS_Store", "1");
    folder.write("root/sub/two", "123");
    folder.makeFolder("root/empty");
    fs::create_symlink("sub", folder / "root/link");
    fs::create_symlink("root", folder / "to root");
    ::mkfifo((folder / "root/pipe").c_str(), 0600);
    const timespec times[2] = {{0, 0}, {1'700'000'000, 500'000'000}};
    ::utimensat(AT_FDCWD, (folder / "root/sub").c_str(), times, 0);

    const auto report = scanner.collectFolder(folder / "to root", 10);

    EXPECT_EQ(report.path, (folder / "root").native());
    EXPECT_EQ(report.name, "root");
    EXPECT_EQ(report.itemCount, 6);
    EXPECT_EQ(report.directFileBytes, 6);
    EXPECT_EQ(report.directFileSizes, (Sizes{{"one", 5}, {".DS_Store", 1}}));
    ASSERT_EQ(report.children.records.size(), 2U);
    const auto& sub = *report.children.records[1]->item;
    EXPECT_EQ(sub.path, (folder / "root/sub").native());
    EXPECT_EQ(sub.identifier, "directory:" + sub.path);
    EXPECT_EQ(sub.modified, Date::fromUnix(1'700'000'000.5));

    const auto size = report.folderSize().value();
    EXPECT_EQ(size.bytes, 9);
    EXPECT_EQ(size.breakdown, (Sizes{{"Files in folder", 6}, {"empty", 0}, {"sub", 3}}));
    EXPECT_EQ(size.rollingMeasurement, true);
    EXPECT_TRUE(size.allocatedBytes);

    fs::remove_all(folder / "root/sub");
    EXPECT_EQ(scanner.collectFolder(folder / "root", 10).children.records.size(), 1U);

    clock.readingStep = 0.3;
    folder.makeFolder("root/late");
    const auto late = scanner.collectFolder(folder / "root", 2).children.records.at(1);
    EXPECT_FALSE(late->attemptedAt) << "the listing took all the time";
}

TEST_F(FolderCollection, IgnoresTheFileManagersFileInATrash) {
    for (const std::string name : {".Trash", "Music"})
        folder.write(name + "/.DS_Store", "123");
    const auto report = scanner.collectFolder(folder / ".Trash", 10);
    EXPECT_EQ(report.name, "Trash");
    EXPECT_EQ(report.itemCount, 0);
    EXPECT_EQ(report.folderSize().value().breakdown, Sizes{});
    EXPECT_EQ(scanner.collectFolder(folder / "Music", 10).itemCount, 1);
}

TEST_F(FolderCollection, ListsAFolderCompletelyOrFails) {
    folder.write("file", "1");
    folder.write("root/file", "1");
    folder.makeFolder("empty");
    folder.write("listed only/file", "1");
    fs::permissions(folder / "listed only", fs::perms(0444));
    folder.write("locked/file", "1");
    fs::permissions(folder / "locked", fs::perms::none);
    std::stop_source stop;
    stop.request_stop();
    {
        const test::OrdinaryUser user(folder.path());
        EXPECT_EQ(failureOf(folder / "missing"), Failure::unreadable);
        EXPECT_EQ(failureOf(folder / "file"), Failure::unavailable);
        EXPECT_EQ(failureOf(folder / "locked"), Failure::unavailable);
        EXPECT_EQ(failureOf(folder / "listed only"), Failure::unreadable);
        EXPECT_EQ(failureOf(folder / "root", stop.get_token()), Failure::cancelled);
        EXPECT_EQ(failureOf(folder / "empty", stop.get_token()), std::nullopt);
    }
    clock.readingStep = 2;
    EXPECT_EQ(failureOf(folder / "root"), std::nullopt);
    clock.readingStep = 4;
    EXPECT_EQ(failureOf(folder / "root"), Failure::timeLimit);
}

TEST_F(FolderCollection, ListsUpToAHundredThousandEntries) {
    // Creating a link is far faster than creating a file, but a file can have at most 65,000 links.
    const fs::path sources[] = {folder.write("root/0", "1"), folder.write("root/1", "1")};
    for (int name = 2; name < 100'000; ++name)
        ASSERT_EQ(
            ::link(sources[name % 2].c_str(), (folder / "root" / std::to_string(name)).c_str()), 0);
    EXPECT_EQ(listContents(folder / "root", clock, {}).value().fileBytes, 100'000);
    folder.write("root/one more", "");
    EXPECT_EQ(listContents(folder / "root", clock, {}).error(), Failure::entryLimit);
}
