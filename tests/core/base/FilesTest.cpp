#include "core/base/Files.h"

#include "tests/support/TemporaryFolder.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace tidemark;
using test::TemporaryFolder;

TEST(FileReplacement, ReplacesContentAndModeAtOnce) {
    const TemporaryFolder folder;
    const auto file = folder.write("document.json", "old");
    std::filesystem::permissions(file, std::filesystem::perms(0644));

    replaceFile(file, "new");

    EXPECT_EQ(test::contents(file), "new");
    EXPECT_EQ(test::modeOf(file), 0600U);
    EXPECT_EQ(test::namesIn(folder.path()), "document.json");
}

TEST(FileReplacement, WithoutCommitChangesNothing) {
    const TemporaryFolder folder;
    const auto file = folder.write("document.json", "old");
    {
        FileReplacement replacement(file);
        replacement.write(std::string(1 << 20, 'x'));
    }
    EXPECT_EQ(test::contents(file), "old");
    EXPECT_EQ(test::namesIn(folder.path()), "document.json");
}

TEST(FileReplacement, RemovesLeftoversOfKilledProcessesOnly) {
    const TemporaryFolder folder;
    const auto file = folder.write("document.json", "old");
    const pid_t child = ::fork();
    if (child == 0) {
        FileReplacement replacement(file);
        replacement.write("half");
        ::raise(SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_NE(test::namesIn(folder.path()), "document.json") << "the child left a temporary file";

    FileReplacement living(file);
    living.write("living");
    replaceFile(file, "other");
    living.commit();

    EXPECT_EQ(test::contents(file), "living");
    EXPECT_EQ(test::namesIn(folder.path()), "document.json");
}

TEST(ReadFile, RefusesOtherThanRegularFilesWithoutBlocking) {
    const TemporaryFolder folder;
    ::mkfifo((folder / "pipe").c_str(), 0600);
    EXPECT_THROW(readFile(folder / "pipe"), FileError);
    EXPECT_THROW(readFile(folder.path()), FileError);
    EXPECT_THROW(readFile(folder / "missing"), FileError);
    const auto file = folder.write("file", "12345");
    EXPECT_EQ(readFile(file, 5), "12345");
    EXPECT_THROW(readFile(file, 4), FileError);
    // The status of a file in /proc says size 0, so it is read like a file that grows meanwhile.
    EXPECT_TRUE(readFile("/proc/self/status").ends_with('\n'));
    EXPECT_THROW(readFile("/proc/self/status", 4), FileError);
}

TEST(CreatePrivateFolders, CreatesPrivateParentsAndLeavesExistingFolders) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    createPrivateFolders(folder / "a/b");
    EXPECT_EQ(test::modeOf(folder / "a"), 0700U);
    EXPECT_EQ(test::modeOf(folder / "a/b"), 0700U);
    EXPECT_EQ(test::modeOf(folder.path()), 0755U);

    folder.write("file", "");
    EXPECT_THROW(createPrivateFolders(folder / "file/below"), FileError);

    // The guard permits it, but there is no guarded folder, as if it were removed just after that.
    const FolderGuard guard([] { return true; }, folder / "data");
    EXPECT_THROW(createPrivateFolders(folder / "data/Backups", guard), FileError);
    EXPECT_THROW(replaceFile(folder / "data/file", "", guard), FileError);
    EXPECT_FALSE(fileExists(folder / "data"));
}
