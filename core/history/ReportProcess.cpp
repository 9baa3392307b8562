#include "core/history/ReportProcess.h"

#include "core/base/Clock.h"
#include "core/base/Error.h"
#include "core/base/Text.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace tidemark {

namespace {

constexpr std::size_t blockSize = 65'536;
/// Seconds between two checks whether a process that has closed its output has ended.
constexpr double waitingStep = 0.005;

double now() {
    return Clock::system().monotonicSeconds();
}

/// Owns the C structure of the child's redirections.
struct FileActions {
    posix_spawn_file_actions_t actions{};

    explicit FileActions(int output) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
};

/// Start attributes with which the child blocks no signal, so that SIGTERM ends it, and does not
/// ignore SIGPIPE.
struct DefaultSignals {
    posix_spawnattr_t attributes{};

    DefaultSignals() {
        sigset_t signals;
        ::sigemptyset(&signals);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setsigmask(&attributes, &signals);
        ::sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~DefaultSignals() { posix_spawnattr_destroy(&attributes); }
    DefaultSignals(const DefaultSignals&) = delete;
    DefaultSignals& operator=(const DefaultSignals&) = delete;
};

} // namespace

ReportProcess::ReportProcess(const std::filesystem::path& program,
                             const std::vector<std::string>& arguments, double timeLimit,
                             double terminationGrace)
    : deadline(now() + timeLimit), terminationGrace(terminationGrace) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw Error("No pipe could be made: " + std::string(std::strerror(errno)) + ".");
    output = FileDescriptor(ends[0]);
    const FileDescriptor input(ends[1]);

    std::string name = program.native();
    std::vector<std::string> words = arguments;
    std::vector<char*> argv{name.data()};
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const FileActions actions(input.get());
    const DefaultSignals signals;
    const int error = ::posix_spawn(&process, program.c_str(), &actions.actions,
                                    &signals.attributes, argv.data(), environ);
    if (error != 0) {
        process = -1;
        throw Error(textFromBytes(program.native())
                    + " could not be started: " + std::string(std::strerror(error)) + ".");
    }
}

ReportProcess::~ReportProcess() {
    terminate();
}

std::string ReportProcess::readOutput(std::size_t limit) {
    std::string bytes;
    std::array<char, blockSize> block{};
    while (bytes.size() <= limit) {
        const double left = deadline - now();
        pollfd ready{output.get(), POLLIN, 0};
        const int count = left <= 0 ? 0 : ::poll(&ready, 1, static_cast<int>(left * 1000) + 1);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            // Cut even if the child has ended well: another process may still have the output open
            // and write to it.
            isCut = true;
            break;
        }
        const ssize_t length = ::read(output.get(), block.data(), block.size());
        if (length < 0 && errno == EINTR)
            continue;
        if (length <= 0) {
            isCut = length < 0;
            break;
        }
        bytes.append(block.data(), static_cast<std::size_t>(length));
    }
    if (bytes.size() > limit)
        terminate();
    return bytes;
}

bool ReportProcess::succeeded() {
    const bool ended = waitUntil(deadline);
    terminate();
    return ended && !isCut && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool ReportProcess::waitUntil(double until) {
    while (process > 0) {
        const pid_t ended = ::waitpid(process, &status, WNOHANG);
        if (ended < 0 && errno == EINTR)
            continue;
        if (ended != 0) {
            // If SIGCHLD is ignored, the status of the child is lost; only its end can be observed.
            if (ended < 0)
                status = unknownStatus;
            process = -1;
            return true;
        }
        if (now() >= until)
            return false;
        Clock::system().pause(waitingStep, {});
    }
    return true;
}

void ReportProcess::terminate() {
    if (process > 0) {
        ::kill(process, SIGTERM);
        // SIGKILL is sent only while the child exists: kill(2) with the id −1 would signal every
        // process.
        if (!waitUntil(now() + terminationGrace)) {
            ::kill(process, SIGKILL);
            while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
            }
            process = -1;
        }
    }
    output.reset();
}

} // namespace tidemark
