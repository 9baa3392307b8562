#include "core/base/FolderLock.h"

#include "core/base/Files.h"
#include "tests/support/Failure.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/Pipe.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <atomic>
#include <csignal>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace tidemark;
using test::Pipe;
using test::TemporaryFolder;

namespace {

char readByte(const FileDescriptor& file) {
    char byte = 0;
    return ::read(file.get(), &byte, 1) == 1 ? byte : '\0';
}

/// Starts a process that waits until `start` is closed, tries to lock the folder, writes the result
/// to `outcome`, and runs until it is killed.
pid_t startContender(const std::filesystem::path& folder, Pipe& start, Pipe& outcome) {
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    start.writing.reset();
    readByte(start.reading);
    const auto lock = FolderLock::take(folder);
    const char result = lock ? '+' : '-';
    if (::write(outcome.writing.get(), &result, 1) != 1)
        ::_exit(1);
    while (true)
        ::pause();
}

void killAndWait(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

} // namespace

TEST(FolderLock, IsHeldByOneProcessUntilThatIsKilled) {
    const TemporaryFolder folder;
    for (int round = 0; round < 50; ++round) {
        Pipe start;
        Pipe outcome;
        const std::array contenders{startContender(folder.path(), start, outcome),
                                    startContender(folder.path(), start, outcome)};
        start.writing.reset();
        const std::string result{readByte(outcome.reading), readByte(outcome.reading)};
        EXPECT_TRUE(result == "+-" || result == "-+") << result << " in round " << round;
        for (const pid_t contender : contenders)
            killAndWait(contender);
    }
    EXPECT_TRUE(FolderLock::take(folder.path()));
}

TEST(FolderLock, ReportsTheHolderUntilItIsReleased) {
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

TEST(FolderLock, IsNotInheritedByStartedPrograms) {
    const TemporaryFolder folder;
    Pipe alive;
    pid_t child = 0;
    {
        const auto lock = FolderLock::take(folder.path());
        ASSERT_TRUE(lock);
        child = ::fork();
        if (child == 0) {
            ::dup2(alive.writing.get(), STDOUT_FILENO);
            ::execl("/bin/sh", "sh", "-c", "echo; exec sleep 100", nullptr);
            ::_exit(127);
        }
        EXPECT_EQ(readByte(alive.reading), '\n');
    }
    EXPECT_TRUE(FolderLock::take(folder.path()));
    killAndWait(child);
}

TEST(FolderLock, FailsWithOneSentenceForAFolderItCannotLock) {
    const TemporaryFolder folder;
    const auto sentence = [](const std::filesystem::path& path) {
        return test::failureOf([&] { std::ignore = FolderLock::take(path); });
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

TEST(FolderLock, CanBeTakenWhileOthersCheckWhetherItIsHeld) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FolderLock::isTaken(folder.path()));
    {
        const auto created = FolderLock::take(folder.path());
        EXPECT_EQ(FolderLock::holder(folder.path()).value().process, ::getpid());
    }
    EXPECT_FALSE(FolderLock::holder(folder.path())) << "the file with the number stays";
    const FileDescriptor asking(::open((folder / "recorder.lock").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(asking.get(), LOCK_SH), 0);
    std::atomic<bool> isTrying = false;
    bool isLocked = false;
    std::thread recorder([&] {
        isTrying = true;
        isTrying.notify_one();
        isLocked = FolderLock::take(folder.path()).has_value();
    });
    isTrying.wait(false);
    std::this_thread::yield();
    ::flock(asking.get(), LOCK_UN);
    recorder.join();
    EXPECT_TRUE(isLocked);
    // A shared lock that is not released is not that of a check, so the folder can't be locked.
    ASSERT_EQ(::flock(asking.get(), LOCK_SH), 0);
    EXPECT_FALSE(FolderLock::take(folder.path()));
}
