#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tidemark::bench {

/// The program as a child process, recording for a user whose folders are all below one folder.
class RecorderProcess {
public:
    /// Processor time of all threads since the start, and voluntary waits of those that still run.
    struct Effort {
        double seconds = 0;
        std::int64_t wakeups = 0;
    };

    enum class Program {
        withoutWindow,
        /// The program with windows, off the screen, with its window open.
        withWindow,
        /// The program with windows, off the screen, before its window is opened.
        withHiddenWindow,
    };

    /// Sets up the recorder: one monitored folder, and captures by command only.
    static void prepare(const std::filesystem::path& home);

    explicit RecorderProcess(std::filesystem::path home, Program program = Program::withoutWindow);
    ~RecorderProcess();
    RecorderProcess(const RecorderProcess&) = delete;
    RecorderProcess& operator=(const RecorderProcess&) = delete;

    /// Runs another process with a command and returns its output.
    std::string command(const std::vector<std::string>& words) const;
    /// Seconds from the start until `status` says that the recorder runs and its output contains
    /// the text. Throws after a minute.
    double secondsUntil(const std::string& statusHolds) const;
    double residentBytes() const;
    Effort effort() const;
    void wait(double seconds) const;

private:
    const std::filesystem::path home;
    const std::chrono::steady_clock::time_point started = std::chrono::steady_clock::now();
    pid_t process;
};

} // namespace tidemark::bench
