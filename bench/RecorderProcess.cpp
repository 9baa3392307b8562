#include "bench/RecorderProcess.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidemark::bench {

namespace fs = std::filesystem;

namespace {

/// Starts a program whose standard output is `output`, or is discarded if that is negative;
/// standard error is discarded. The first of the arguments is the program's path.
pid_t spawn(const fs::path& home, std::vector<std::string> arguments, int output) {
    const pid_t child = ::fork();
    // Otherwise the signals for the child would go to every process of the user.
    if (child < 0)
        throw std::runtime_error("no process could be started");
    if (child != 0)
        return child;
    std::vector<std::string> variables{"HOME=" + home.native(),
                                       "LC_ALL=C.UTF-8",
                                       "XDG_DATA_HOME=" + (home / "data").native(),
                                       "XDG_CONFIG_HOME=" + (home / "config").native(),
                                       "XDG_RUNTIME_DIR=" + (home / "run").native(),
                                       "QT_QPA_PLATFORM=offscreen"};
    const auto pointers = [](std::vector<std::string>& texts) {
        std::vector<char*> list;
        for (std::string& text : texts)
            list.push_back(text.data());
        list.push_back(nullptr);
        return list;
    };
    const int nowhere = ::open("/dev/null", O_RDWR);
    ::dup2(nowhere, STDIN_FILENO);
    ::dup2(output < 0 ? nowhere : output, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    ::execve(arguments.front().c_str(), pointers(arguments).data(), pointers(variables).data());
    ::_exit(127);
}

std::string outputOf(const fs::path& home, std::vector<std::string> words) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    words.insert(words.begin(), TIDEMARK_PROGRAM);
    const pid_t child = spawn(home, words, ends[1]);
    ::close(ends[1]);
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(ends[0], block.data(), block.size())) > 0;)
        text.append(block.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        throw std::runtime_error("the program failed: " + words.at(1));
    return text;
}

/// The number after a name in a file such as /proc/1/status.
std::int64_t numberIn(const fs::path& file, const std::string& name) {
    std::ifstream status(file);
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::strtoll(line.c_str() + name.size(), nullptr, 10);
    return 0;
}

std::vector<std::string> wordsOf(RecorderProcess::Program program) {
    switch (program) {
    case RecorderProcess::Program::withWindow:
        return {TIDEMARK_DESKTOP};
    case RecorderProcess::Program::withHiddenWindow:
        return {TIDEMARK_DESKTOP, "--background"};
    case RecorderProcess::Program::withoutWindow:
        break;
    }
    return {TIDEMARK_PROGRAM, "run"};
}

} // namespace

void RecorderProcess::prepare(const fs::path& home) {
    fs::create_directories(home / "run");
    fs::permissions(home / "run", fs::perms(0700));
    fs::create_directories(home / "Stuff/part");
    outputOf(home, {"folders", "add", (home / "Stuff").native()});
    outputOf(home, {"schedule", "manual"});
}

RecorderProcess::RecorderProcess(fs::path user, Program program)
    : home(std::move(user)), process(spawn(home, wordsOf(program), -1)) {}

RecorderProcess::~RecorderProcess() {
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
}

std::string RecorderProcess::command(const std::vector<std::string>& words) const {
    return outputOf(home, words);
}

double RecorderProcess::secondsUntil(const std::string& statusHolds) const {
    // Without the recorder's socket, `status` would read the journal itself.
    const auto hasSocket = [&] {
        std::error_code error;
        const fs::directory_iterator sockets(home / "run/Tidemark", error);
        return !error && sockets != fs::directory_iterator();
    };
    const auto passed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    };
    while (passed() < 60) {
        if (hasSocket()) {
            const std::string status = outputOf(home, {"status", "--json"});
            if (status.find("\"running\":true") != std::string::npos
                && status.find(statusHolds) != std::string::npos)
                return passed();
        }
        wait(0.002);
    }
    throw std::runtime_error("the recorder never said " + statusHolds);
}

double RecorderProcess::residentBytes() const {
    const fs::path place = fs::path("/proc") / std::to_string(process) / "status";
    return static_cast<double>(numberIn(place, "VmRSS:")) * 1024;
}

RecorderProcess::Effort RecorderProcess::effort() const {
    const fs::path place = fs::path("/proc") / std::to_string(process);
    Effort effort;
    std::ifstream stat(place / "stat");
    std::string text((std::istreambuf_iterator<char>(stat)), {});
    // After the name, which may contain anything, the processor times are the 12th and 13th field.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string field;
    for (int number = 0; number < 13 && fields >> field; ++number)
        if (number >= 11)
            effort.seconds +=
                std::strtod(field.c_str(), nullptr) / static_cast<double>(::sysconf(_SC_CLK_TCK));
    for (const auto& thread : fs::directory_iterator(place / "task"))
        effort.wakeups += numberIn(thread.path() / "status", "voluntary_ctxt_switches:");
    return effort;
}

void RecorderProcess::wait(double seconds) const {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

} // namespace tidemark::bench
