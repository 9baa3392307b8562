#include "core/base/FolderLock.h"

#include "core/base/Files.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <csignal>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace tidemark;
using test::TemporaryFolder;

namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0)
            throw std::runtime_error("no pipe");
        reader = FileDescriptor(ends[0]);
        writer = FileDescriptor(ends[1]);
    }
    FileDescriptor reader;
    FileDescriptor writer;
};

char readByte(const FileDescriptor& file) {
    char byte = 0;
    return ::read(file.get(), &byte, 1) == 1 ? byte : '\0';
}

/// A process that waits for the start, tries to take the folder, tells how that went, and lives
/// until it is killed.
pid_t startContender(const std::filesystem::path& folder, Pipe& start, Pipe& outcome) {
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    start.writer.reset();
    readByte(start.reader);
    const auto lock = FolderLock::take(folder);
    const char told = lock ? '+' : '-';
    if (::write(outcome.writer.get(), &told, 1) != 1)
        ::_exit(1);
    while (true)
        ::pause();
}

void killAndWait(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

} // namespace

TEST(FolderLock, OneOfTwoProcessesTakesAFolderAndAKilledOneFreesIt) {
    const TemporaryFolder folder;
    for (int round = 0; round < 50; ++round) {
        Pipe start;
        Pipe outcome;
        const std::array contenders{startContender(folder.path(), start, outcome),
                                    startContender(folder.path(), start, outcome)};
        start.writer.reset();
        const std::string told{readByte(outcome.reader), readByte(outcome.reader)};
        EXPECT_TRUE(told == "+-" || told == "-+") << told << " in round " << round;
        for (const pid_t contender : contenders)
            killAndWait(contender);
    }
    EXPECT_TRUE(FolderLock::take(folder.path()));
}

TEST(FolderLock, SaysWhoHasTheFolderUntilItIsFree) {
    const TemporaryFolder folder;
    auto lock = FolderLock::take(folder.path());
    ASSERT_TRUE(lock);
    EXPECT_EQ(test::modeOf(folder / "recorder.lock"), 0600U);

    const auto second = FolderLock::take(folder.path());
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().sentence(), "Tidemark is already recording into "
                                             + folder.path().native() + " (process "
                                             + std::to_string(::getpid()) + ").");

    folder.write("recorder.lock", "no number");
    EXPECT_EQ(FolderLock::take(folder.path()).error().sentence(),
              "Tidemark is already recording into " + folder.path().native() + ".");
    // The lock lasts as long as the object it was moved into.
    {
        const FolderLock moved = std::move(*lock);
        EXPECT_FALSE(FolderLock::take(folder.path()));
    }
    EXPECT_TRUE(FolderLock::take(folder.path()));
}

TEST(FolderLock, ARunProgramDoesNotInheritIt) {
    const TemporaryFolder folder;
    Pipe alive;
    pid_t child = 0;
    {
        const auto lock = FolderLock::take(folder.path());
        ASSERT_TRUE(lock);
        child = ::fork();
        if (child == 0) {
            ::dup2(alive.writer.get(), STDOUT_FILENO);
            ::execl("/bin/sh", "sh", "-c", "echo; exec sleep 100", nullptr);
            ::_exit(127);
        }
        EXPECT_EQ(readByte(alive.reader), '\n');
    }
    EXPECT_TRUE(FolderLock::take(folder.path()));
    killAndWait(child);
}

TEST(FolderLock, RefusesAFolderItCannotLockInOneSentence) {
    const TemporaryFolder folder;
    const auto sentence = [](const std::filesystem::path& path) -> std::string {
        try {
            return FolderLock::take(path) ? "taken" : "held";
        } catch (const FileError& error) {
            return error.what();
        }
    };
    const std::string start = folder.path().native();
    EXPECT_EQ(sentence(folder / "missing"),
              start + "/missing could not be locked: No such file or directory.");
    std::filesystem::create_symlink("/etc/hostname", folder.makeFolder("link") / "recorder.lock");
    EXPECT_EQ(sentence(folder / "link"),
              start + "/link could not be locked: Too many levels of symbolic links.");
    ::mkfifo((folder.makeFolder("pipe") / "recorder.lock").c_str(), 0600);
    EXPECT_EQ(sentence(folder / "pipe"), start + "/pipe could not be locked: Invalid argument.");

    std::filesystem::permissions(folder.makeFolder("closed"), std::filesystem::perms(0555));
    const test::OrdinaryUser user(folder.path());
    EXPECT_EQ(sentence(folder / "closed"),
              start + "/closed could not be locked: Permission denied.");
}
