#include "core/storage/StorageTraversal.h"

#include "core/base/FileDescriptor.h"
#include "tests/support/FolderWalk.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ResourceLimit.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace tidemark;
using test::failureOf;
using test::TemporaryFolder;
using test::walkToEnd;
namespace fs = std::filesystem;
using Failure = StorageMeasurementFailure;
using Sizes = std::map<std::string, std::int64_t>;

namespace {

StorageTraversal opened(const fs::path& folder, std::int64_t entryLimit = 1'000'000) {
    return StorageTraversal::open(folder, entryLimit).value();
}

/// Makes nested folders, each with an empty folder "aside" beside it, and a file in the deepest.
/// They are made through descriptors, because the path would be too long.
void makeDeepTree(const fs::path& root, int depth, const std::string& name) {
    FileDescriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY));
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(::mkdirat(folder.get(), name.c_str(), 0700), 0);
        ASSERT_EQ(::mkdirat(folder.get(), "aside", 0700), 0);
        folder = FileDescriptor(::openat(folder.get(), name.c_str(), O_RDONLY | O_DIRECTORY));
    }
    const FileDescriptor file(::openat(folder.get(), "file", O_WRONLY | O_CREAT, 0600));
    ASSERT_EQ(::write(file.get(), "1234", 4), 4);
}

/// Removes the tree from the bottom up, because `remove_all` keeps every level open.
void removeDeepTree(const fs::path& root, int depth, const std::string& name) {
    FileDescriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY));
    for (int level = 0; level < depth; ++level)
        folder = FileDescriptor(::openat(folder.get(), name.c_str(), O_RDONLY | O_DIRECTORY));
    ::unlinkat(folder.get(), "file", 0);
    for (int level = 0; level < depth; ++level) {
        folder = FileDescriptor(::openat(folder.get(), "..", O_RDONLY | O_DIRECTORY));
        ::unlinkat(folder.get(), name.c_str(), AT_REMOVEDIR);
        ::unlinkat(folder.get(), "aside", AT_REMOVEDIR);
    }
}

} // namespace

TEST(StorageTraversal, AddsUpEveryFolderOfATree) {
    const TemporaryFolder folder;
    folder.write("tree/one.txt", "12345");
    folder.write("tree/.DS_Store", "123");
    folder.write("tree/sub/two.txt", "1234567");
    folder.write("tree/sub/deeper/three.txt", std::string(10'000, 'x'));
    folder.makeFolder("tree/empty");
    fs::create_hard_link(folder / "tree/one.txt", folder / "tree/sub/again.txt");
    fs::create_symlink(folder / "tree/one.txt", folder / "tree/link");
    fs::create_symlink(folder / "tree/sub", folder / "tree/linked");
    fs::create_symlink(folder / "tree", folder / "tree/sub/loop");
    ::mkfifo((folder / "tree/pipe").c_str(), 0600);

    auto walk = opened(folder / "tree");
    const auto size = walkToEnd(walk).value();

    EXPECT_EQ(size.path, (folder / "tree").native());
    EXPECT_EQ(size.name, "tree");
    EXPECT_EQ(size.bytes, 5 + 3 + 7 + 5 + 10'000);
    EXPECT_EQ(size.breakdown, (Sizes{{"Files in folder", 8}, {"sub", 10'012}, {"empty", 0}}));
    EXPECT_EQ(size.directFileSizes, (Sizes{{"one.txt", 5}, {".DS_Store", 3}}));
    EXPECT_FALSE(size.itemCount);
    EXPECT_EQ(size.rollingMeasurement, false);
    EXPECT_FALSE(size.measuredAt);
    EXPECT_EQ(walk.count(), 12);

    std::int64_t allocated = 0;
    for (const char* file :
         {"one.txt", ".DS_Store", "sub/two.txt", "sub/again.txt", "sub/deeper/three.txt"}) {
        struct stat status{};
        ASSERT_EQ(::lstat((folder / "tree" / file).c_str(), &status), 0);
        allocated += status.st_blocks * 512;
    }
    EXPECT_EQ(size.allocatedBytes, allocated);

    EXPECT_EQ(walk.completedSizes().size(), 3U);
    const auto sub = walk.completedSizes().find((folder / "tree/sub").native()).value();
    EXPECT_EQ(sub.name, "sub");
    EXPECT_EQ(sub.bytes, 10'012);
    EXPECT_EQ(sub.breakdown, (Sizes{{"Files in folder", 12}, {"deeper", 10'000}}));
    EXPECT_FALSE(sub.directFileSizes);
    EXPECT_EQ(sub, walk.completedSizes().find(sub.path));
    for (const char* other : {"tree", "tree/su", "tree/sub/", "tree/sub/two.txt", "sub"})
        EXPECT_FALSE(walk.completedSizes().find((folder / other).native())) << other;
}

TEST(StorageTraversal, StartsAtFoldersOnly) {
    const TemporaryFolder folder;
    folder.write("file", "1");
    folder.makeFolder("empty");
    fs::create_symlink(folder / "file", folder / "to file");
    fs::create_symlink(folder / "empty", folder / "to folder");
    folder.makeFolder("target/sub");
    fs::create_symlink(folder / "target", folder / "on the way");
    const auto refusal = [&](auto open, const char* name) {
        return open(folder / name, 1, StorageTraversal::RootFiles::named).error();
    };
    for (const char* name : {"file", "to file"})
        EXPECT_EQ(refusal(StorageTraversal::open, name), Failure::unavailable) << name;
    EXPECT_EQ(refusal(StorageTraversal::open, "missing"), Failure::unreadable);
    for (const char* name : {"file", "to folder", "on the way/sub"})
        EXPECT_EQ(refusal(StorageTraversal::openItem, name), Failure::unavailable) << name;
    EXPECT_EQ(refusal(StorageTraversal::openItem, "missing"), Failure::unreadable);

    const auto size = walkToEnd(folder / "to folder").value();
    EXPECT_EQ(size.path, (folder / "empty").native());
    EXPECT_EQ(size.bytes, 0);
    EXPECT_EQ(size.breakdown, Sizes{});
    EXPECT_EQ(size.directFileSizes, Sizes{});
}

TEST(StorageTraversal, EndsAtTheEntryAfterTheLimit) {
    const TemporaryFolder folder;
    folder.write("a", "1");
    folder.write("b/c", "1");
    EXPECT_EQ(walkToEnd(folder.path(), 3).value().bytes, 2);
    EXPECT_EQ(failureOf(walkToEnd(folder.path(), 2)), Failure::entryLimit);
}

TEST(StorageTraversal, ContinuesWithoutASizeAfterAnUnreadableFolder) {
    const TemporaryFolder folder;
    folder.write("locked/file", "1");
    folder.write("listed only/file", "1");
    folder.write("open/file", "123");
    fs::permissions(folder / "locked", fs::perms::none);
    fs::permissions(folder / "listed only", fs::perms(0444));
    const test::OrdinaryUser user(folder.path());

    auto walk = opened(folder.path());
    EXPECT_EQ(failureOf(walkToEnd(walk)), Failure::unreadable);
    EXPECT_EQ(walk.completedSizes().find((folder / "open").native()).value().bytes, 3);
    EXPECT_FALSE(walk.completedSizes().find((folder / "locked").native()));
    EXPECT_EQ(failureOf(walkToEnd(folder / "locked")), Failure::unavailable);
}

TEST(StorageTraversal, MeasuresWhatIsLeftOfATreeThatChanges) {
    const auto removeFolder = [](const auto& folder) { fs::remove_all(folder / "tree/sub"); };
    // The new folder may well get the inode of the old one.
    const auto replaceFolder = [](const auto& folder) {
        fs::remove_all(folder / "tree/sub");
        folder.write("tree/sub/c", "12345");
    };
    struct Case {
        const char* what;
        /// The number of the step after which the tree is changed: the first visits the file of the
        /// root, the second enters the subfolder, the third and fourth visit its files.
        int step;
        void (*change)(const TemporaryFolder& folder);
        /// The size without a pause at the change, and with one.
        std::int64_t bytes;
        std::int64_t bytesAfterRest;
    };
    const Case cases[] = {
        {"a folder vanishes before it is entered", 1, removeFolder, 1, 1},
        {"a folder becomes a link", 1,
         [](const auto& folder) {
             fs::remove_all(folder / "tree/sub");
             fs::create_symlink(folder / "outside", folder / "tree/sub");
         },
         1, 1},
        {"a folder becomes a file", 1,
         [](const auto& folder) {
             fs::remove_all(folder / "tree/sub");
             folder.write("tree/sub", "12345");
         },
         6, 6},
        {"a folder vanishes after it was entered", 2, removeFolder, 1, 1},
        {"files vanish after they were listed", 3,
         [](const auto& folder) {
             for (const char* name : {"a", "b"})
                 fs::remove(folder / "tree/sub" / name);
         },
         2, 2},
        {"a folder vanishes between its files", 3, removeFolder, 2, 1},
        {"another folder gets its name", 3, replaceFolder, 2, 6},
        {"a folder becomes a link between its files", 3,
         [](const auto& folder) {
             fs::rename(folder / "tree/sub", folder / "outside/moved");
             fs::create_symlink(folder / "outside/moved", folder / "tree/sub");
         },
         3, 1},
        {"another folder gets the name of the root", 3,
         [](const auto& folder) {
             fs::rename(folder / "tree", folder / "outside/moved");
             folder.write("tree/file", "1234567");
         },
         3, 7},
    };
    for (const Case& change : cases) {
        for (const bool rests : {false, true}) {
            const TemporaryFolder folder;
            folder.write("outside/big", std::string(1000, 'x'));
            folder.write("tree/file", "1");
            folder.write("tree/sub/a", "1");
            folder.write("tree/sub/b", "1");
            auto walk = opened(folder / "tree");
            int steps = 0;
            const auto size = walkToEnd(walk, [&] {
                                  if (++steps != change.step)
                                      return;
                                  if (rests)
                                      walk.rest();
                                  change.change(folder);
                              }).value();
            EXPECT_EQ(size.bytes, rests ? change.bytesAfterRest : change.bytes)
                << change.what << (rests ? ", after a rest" : "");
            std::int64_t parts = 0;
            for (const auto& [name, bytes] : *size.breakdown)
                parts += bytes;
            EXPECT_EQ(parts, size.bytes) << change.what;
        }
    }
}

TEST(StorageTraversal, CountsAFolderThatIsWalkedAgainOnce) {
    const TemporaryFolder folder;
    folder.write("tree/a/b/done/file", "123");
    folder.write("tree/a/b/more/file", "1");
    auto walk = opened(folder / "tree");
    bool changed = false;
    const auto size = walkToEnd(walk, [&] {
                          if (walk.completedSizes().size() != 1 || std::exchange(changed, true))
                              return;
                          walk.rest();
                          fs::rename(folder / "tree/a/b", folder / "moved");
                          folder.write("tree/a/b/new/file", "12345");
                      }).value();
    EXPECT_EQ(size.breakdown, (Sizes{{"a", 5}}));
    const auto a = walk.completedSizes().find((folder / "tree/a").native()).value();
    EXPECT_EQ(a.breakdown, (Sizes{{"b", 5}}));
    const auto b = walk.completedSizes().find((folder / "tree/a/b").native()).value();
    EXPECT_EQ(b.breakdown, (Sizes{{"new", 5}}));
}

TEST(StorageTraversal, FailsWhenTheRootIsRemovedDuringAPause) {
    const TemporaryFolder folder;
    for (const bool becomesAFile : {false, true}) {
        folder.write("tree/file", "1");
        auto walk = opened(folder / "tree");
        walk.rest();
        fs::remove_all(folder / "tree");
        if (becomesAFile)
            folder.write("tree", "1");
        EXPECT_EQ(failureOf(walkToEnd(walk)),
                  becomesAFile ? Failure::unavailable : Failure::unreadable);
    }
}

TEST(StorageTraversal, FollowsNoLinkThatAppearedDuringAPause) {
    const TemporaryFolder folder;
    folder.write("root/tree/file", "1");
    folder.write("outside/tree/file", "12345");
    auto walk = opened(folder / "root/tree");
    walk.rest();
    fs::rename(folder / "root", folder / "moved");
    fs::create_symlink(folder / "outside", folder / "root");
    EXPECT_EQ(failureOf(walkToEnd(walk)), Failure::unavailable);
}

TEST(StorageTraversal, GivesTheSameResultWithAPauseAfterEveryStep) {
    const TemporaryFolder folder;
    folder.write("tree/a/deep/down/file", "123");
    folder.write("tree/a/other/file", "12");
    folder.write("tree/b/file", "1");
    for (int name = 0; name < 1500; ++name)
        folder.write("tree/many/" + std::to_string(name), "");
    auto unrested = opened(folder / "tree");
    auto rested = opened(folder / "tree");
    EXPECT_EQ(walkToEnd(rested, [&] { rested.rest(); }), walkToEnd(unrested));
    EXPECT_EQ(rested.count(), unrested.count());
    EXPECT_EQ(rested.completedSizes().size(), unrested.completedSizes().size());

    auto limited = opened(folder / "tree", 20);
    EXPECT_EQ(failureOf(walkToEnd(limited, [&] { limited.rest(); })), Failure::entryLimit);
}

TEST(StorageTraversal, StaysInTheTreeWhenAFolderIsMovedAway) {
    const TemporaryFolder folder;
    for (const char* branch : {"one", "two"}) {
        folder.write(std::string("tree/") + branch + "/b/c/file", "1");
        // A walk that went up with ".." from the place to which the folder is moved would find
        // this file.
        folder.write(std::string("decoy/") + branch + "/big", std::string(1000, 'x'));
    }
    folder.makeFolder("decoy/place");
    auto walk = opened(folder / "tree");
    const auto result = walkToEnd(walk, [&] {
        if (walk.count() != 4 || walk.completedSizes().size() != 0)
            return;
        // Deep in the first branch, where the root is not open any more.
        std::error_code error;
        for (const char* branch : {"one", "two"})
            fs::rename(folder / "tree" / branch / "b", folder / "decoy/place" / branch, error);
    });
    EXPECT_EQ(result.value().bytes, 1) << "what was walked before it moved";
}

TEST(StorageTraversal, EndsAtAFolderMountedBelowItself) {
    const TemporaryFolder folder;
    folder.makeFolder("tree/sub/again");
    enum Outcome { notPermitted = 1, unreadable, other };
    const pid_t child = ::fork();
    if (child == 0) {
        // The mount exists only for this process.
        if (::unshare(CLONE_NEWNS) != 0
            || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
            || ::mount((folder / "tree").c_str(), (folder / "tree/sub/again").c_str(), nullptr,
                       MS_BIND, nullptr)
                   != 0)
            ::_exit(notPermitted);
        ::_exit(failureOf(walkToEnd(folder / "tree", 100)) == Failure::unreadable ? unreadable
                                                                                  : other);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WEXITSTATUS(status) == notPermitted)
        GTEST_SKIP() << "mounting is not permitted";
    EXPECT_EQ(WEXITSTATUS(status), unreadable);
}

TEST(StorageTraversal, CountsFilesButNotFoldersWithInvalidNames) {
    const TemporaryFolder folder;
    folder.write("bad \xFF", "123");
    folder.write("good é", "12");
    const auto size = walkToEnd(folder.path()).value();
    EXPECT_EQ(size.bytes, 5);
    EXPECT_EQ(size.directFileSizes, (Sizes{{"good é", 2}}));

    folder.makeFolder("sub/bad \xFF");
    EXPECT_EQ(failureOf(walkToEnd(folder.path())), Failure::unreadable);
    EXPECT_EQ(failureOf(walkToEnd(folder / "sub/bad \xFF")), Failure::unreadable);
}

TEST(StorageTraversal, WalksDeepTreesWithFewDescriptors) {
    constexpr int depth = 400;
    constexpr std::size_t folders = std::size_t{2} * depth;
    const TemporaryFolder folder;
    const std::string name(250, 'x');
    makeDeepTree(folder.path(), depth, name);
    const test::ResourceLimit few(RLIMIT_NOFILE, 32);
    auto walk = opened(folder.path());
    const auto size = walkToEnd(walk).value();
    EXPECT_EQ(size.bytes, 4);
    EXPECT_EQ(walk.count(), 2 * depth + 1);
    EXPECT_EQ(walk.completedSizes().size(), folders);
    std::string deepest = folder.path().native();
    for (int level = 0; level < depth; ++level)
        deepest += "/" + name;
    EXPECT_EQ(walk.completedSizes().find(deepest).value().bytes, 4);
    removeDeepTree(folder.path(), depth, name);
}

TEST(CompletedFolders, KeepsTheFirstFoldersUpToTheLimit) {
    CompletedFolders folders("/");
    const auto parent = folders.enter(CompletedFolders::noFolder, "parent");
    for (std::size_t k = 0; k <= CompletedFolders::limit; ++k)
        folders.complete(folders.enter(parent, std::to_string(k)), {1, 1, {}});
    folders.complete(parent, {2, 2, {}});

    EXPECT_EQ(folders.size(), CompletedFolders::limit);
    EXPECT_EQ(folders.find("/parent/49999").value().path, "/parent/49999");
    EXPECT_FALSE(folders.find("/parent/50000"));
    EXPECT_FALSE(folders.find("/parent"));
    folders.keepFirst(10);
    EXPECT_TRUE(folders.find("/parent/9"));
    EXPECT_FALSE(folders.find("/parent/10"));
}

TEST(FolderTotals, DoNotOverflow) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    FolderTotals totals;
    totals.addFile(most, most);
    totals.addFile(1, 1);
    totals.addFolder(totals);
    EXPECT_EQ(totals.bytes, most);
    EXPECT_EQ(totals.allocatedBytes, most);
    EXPECT_EQ(totals.ownFileBytes, most);
}
