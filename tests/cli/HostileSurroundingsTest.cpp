#include "recorder/Interruption.h"
#include "recorder/LogWriter.h"
#include "tests/cli/RecorderProgram.h"
#include "tests/support/Pipe.h"
#include "tests/support/Terminal.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <optional>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

using namespace tidemark;
using test::Outcome;
using test::Output;
using test::Pipe;
using test::RecorderProgram;
using test::Words;
using namespace std::chrono_literals;

namespace {

void limit(auto resource, rlim_t value) {
    const rlimit both{value, value};
    ::setrlimit(resource, &both);
}

bool isCancelled() {
    itimerval timer{};
    ::getitimer(ITIMER_REAL, &timer);
    return timer.it_value.tv_sec == 0 && timer.it_value.tv_usec == 0;
}

void block(int signal) {
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, signal);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

bool isPending(int signal) {
    sigset_t signals;
    ::sigpending(&signals);
    return ::sigismember(&signals, signal) == 1;
}

void hang() {
    while (true)
        ::pause();
}

void printLastWords() {
    constexpr std::string_view words = "last words";
    static_cast<void>(::write(STDERR_FILENO, words.data(), words.size()));
}

} // namespace

TEST_F(RecorderProgram, FailsWithOneSentenceWithoutThreadsOrFileDescriptors) {
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0777));
    std::filesystem::permissions(folder / "run", std::filesystem::perms(0777));
    // RLIMIT_NPROC counts all processes of a user. Root can become a user that has no others.
    const uid_t user = ::geteuid() == 0 ? 1'000'000 + static_cast<uid_t>(::getpid()) : ::geteuid();
    // The leak check of a sanitizer would start a thread of its own.
    Words variables = environment();
    variables.emplace_back("ASAN_OPTIONS=detect_leaks=0");
    for (const rlim_t processes : {1U, 2U, 3U}) {
        const Outcome outcome = test::run({"capture"}, Output::file, variables, [&] {
            limit(RLIMIT_NPROC, processes);
            if (::setreuid(user, user) != 0)
                ::_exit(126);
        });
        EXPECT_EQ(outcome.status, 1) << processes;
        EXPECT_TRUE(test::contains(outcome.err, "No further thread could be started: "));
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    }
    for (const rlim_t files : {7U, 12U, 17U}) {
        const Outcome outcome = command({"capture"}, [&] { limit(RLIMIT_NOFILE, files); });
        EXPECT_EQ(outcome, (Outcome{1, "",
                                    "tidemark: Too few files may be open at once: 16 more are "
                                    "needed (ulimit -n).\n"}))
            << files;
    }
}

TEST(WrongUsage, IsReportedWithoutControlCharacters) {
    const Outcome outcome = test::run({"timeline", "a\033]0;owned\a\nb\u202Ec"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(
        test::contains(outcome.err, "a\uFFFD]0;owned\uFFFD\uFFFDb\uFFFDc\nRun with --help"));
}

TEST(Output, EndsTheProgramSilentlyWhenItsReaderIsGone) {
    const auto ignoring = [] { std::signal(SIGPIPE, SIG_IGN); };
    const auto usual = [] { std::signal(SIGPIPE, SIG_DFL); };
    EXPECT_EQ(test::run({}, Output::closedPipe, {}, ignoring), (Outcome{128 + SIGPIPE, "", ""}));
    EXPECT_EQ(test::run({}, Output::closedPipe, {}, usual), (Outcome{-1, "", ""}));
}

TEST(Output, IsDroppedWhenItIsClosed) {
    const Outcome outcome = test::run({"--version"}, Output::file, {}, [] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::close(stream);
    });
    EXPECT_EQ(outcome, (Outcome{0, "", ""}));
}

TEST(LogWriter, DoesNotWaitForItsReaderAndCountsDroppedLines) {
    const Pipe pipe;
    LogWriter log(pipe.writing.get());
    log.write("first");
    EXPECT_EQ(pipe.taken(), "first\n");
    pipe.fill();
    const std::string line(1000, 'l');
    for (int count = 0; count < 70; ++count)
        log.write(line);
    log.write("as short as it is, it would stand in the place of those before");
    const std::string filling = pipe.taken();
    EXPECT_EQ(filling, std::string(filling.size(), 'x'));
    log.write("after");
    std::string kept = pipe.taken();
    log.write("last");
    kept += pipe.taken();
    EXPECT_EQ(std::ranges::count(kept, '\n'), 65 + 2);
    EXPECT_TRUE(
        kept.ends_with("l\nLines of this log were dropped, as nobody read them: 7.\nlast\n"))
        << kept.substr(kept.size() - 100);
}

TEST(LogWriter, DropsNoLineOnceItsReaderHasReadOn) {
    const Pipe pipe;
    LogWriter log(pipe.writing.get());
    pipe.fill();
    const std::string line(1000, 'l');
    for (int count = 0; count < 65; ++count)
        log.write(line);
    pipe.taken();
    log.write(line);
    std::string kept = pipe.taken();
    log.write("last");
    kept += pipe.taken();
    EXPECT_EQ(std::ranges::count(kept, '\n'), 67);
    EXPECT_FALSE(test::contains(kept, "dropped"));
}

TEST(LogWriter, DoesNotWaitForASocketOrATerminal) {
    if (!test::hasTerminals())
        GTEST_SKIP() << "this machine has no terminals";
    int sockets[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets), 0);
    const FileDescriptor journal(sockets[0]);
    const FileDescriptor reader(sockets[1]);
    const FileDescriptor screen(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_EQ(::unlockpt(screen.get()), 0);
    const FileDescriptor terminal(::open(::ptsname(screen.get()), O_RDWR | O_NOCTTY | O_CLOEXEC));
    for (const int stream : {journal.get(), terminal.get()}) {
        LogWriter log(stream);
        for (int count = 0; count < 1000; ++count)
            log.write(std::string(1000, 'l'));
    }
    char first = ' ';
    for (const int end : {reader.get(), screen.get()})
        EXPECT_TRUE(::read(end, &first, 1) == 1 && first == 'l');
}

TEST(LogWriter, StopsWritingWhenItsReaderIsGone) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    Pipe pipe;
    LogWriter log(pipe.writing.get());
    pipe.reading.reset();
    log.write("nobody hears");
    // Another reader of the same pipe (proc(5)).
    const std::string end = "/proc/self/fd/" + std::to_string(pipe.writing.get());
    pipe.reading = FileDescriptor(::open(end.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    log.write("of this");
    EXPECT_TRUE(pipe.reading);
    EXPECT_EQ(pipe.taken(), "");
    std::signal(SIGPIPE, before);
}

TEST_F(RecorderProgram, KeepsRecordingWhenTheReaderOfItsLogIsGone) {
    startRecording();
    log.reset();
    for (int times = 0; times < 3; ++times) {
        grow(4 + static_cast<std::uintmax_t>(times));
        EXPECT_EQ(command({"capture"}).status, 0);
    }
    EXPECT_TRUE(test::contains(command({"status", "--json"}).out, "\"running\":true"));
    EXPECT_EQ(stop(SIGTERM), 0);
}

TEST_F(RecorderProgram, KeepsRecordingWhenItsLogIsNotRead) {
    command({"folders", "add", monitored()});
    const Pipe pipe;
    pipe.fill();
    startWith(pipe.writing.get());
    const auto hasCaptured = [&] {
        const std::string status = command({"status", "--json"}).out;
        return status.find("\"running\":true") != std::string::npos
               && status.find("\"snapshots\":1") != std::string::npos;
    };
    int attempts = 1000;
    while (!hasCaptured() && --attempts > 0)
        std::this_thread::yield();
    EXPECT_GT(attempts, 0);
    EXPECT_EQ(stop(SIGTERM), 0);
}

TEST(InterruptionDeathTest, EndsAHangingProcessAfterOneSignal) {
    using enum Interruption::AfterStop;
    const auto status = testing::ExitedWithCode(128 + SIGTERM);
    EXPECT_EXIT(
        {
            const Interruption interruption(continues, 20ms);
            Interruption::callBeforeEndingAtOnce(printLastWords);
            ::kill(::getpid(), SIGTERM);
            hang();
        },
        status, "last words");
    EXPECT_EXIT(
        {
            const Interruption interruption(continues, 20ms);
            const std::stop_callback stuck(interruption.token(), hang);
            ::kill(::getpid(), SIGTERM);
            hang();
        },
        status, "");
    EXPECT_EXIT(
        {
            {
                const Interruption interruption(ends, 20ms);
                ::kill(::getpid(), SIGTERM);
                while (!interruption.token().stop_requested())
                    std::this_thread::yield();
            }
            hang();
        },
        status, "");
    EXPECT_EXIT(
        {
            const Interruption interruption(continues, 1h);
            Interruption::callBeforeEndingAtOnce(printLastWords);
            ::kill(::getpid(), SIGTERM);
            while (!interruption.token().stop_requested())
                std::this_thread::yield();
            ::kill(::getpid(), SIGTERM);
            hang();
        },
        status, "last words")
        << "the second signal";
    EXPECT_EXIT(
        {
            // The parent may have started the program with this signal blocked.
            block(SIGALRM);
            const Interruption interruption(continues, 20ms);
            ::kill(::getpid(), SIGTERM);
            hang();
        },
        status, "");
    EXPECT_EXIT(
        {
            std::optional<Interruption> interruption(std::in_place, continues, 20ms);
            const auto token = interruption->token();
            ::kill(::getpid(), SIGUSR1);
            while (isPending(SIGUSR1))
                std::this_thread::yield();
            interruption.reset();
            std::_Exit(token.stop_requested() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "")
        << "a signal that any program may send";
    EXPECT_EXIT(
        {
            {
                const Interruption interruption(continues, 1min);
                ::kill(::getpid(), SIGTERM);
                while (!interruption.token().stop_requested())
                    std::this_thread::yield();
            }
            std::_Exit(isCancelled() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
