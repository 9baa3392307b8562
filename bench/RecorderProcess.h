#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tidemark::bench {

/// The program itself, recording for a user whose folders lie below one folder.
class RecorderProcess {
public:
    /// Processor time and voluntary waits of all threads since the start.
    struct Effort {
        double seconds = 0;
        std::int64_t wakeups = 0;
    };

    /// What a user does once: chooses a folder, and captures by command only.
    static void prepare(const std::filesystem::path& home);

    explicit RecorderProcess(std::filesystem::path home);
    ~RecorderProcess();
    RecorderProcess(const RecorderProcess&) = delete;
    RecorderProcess& operator=(const RecorderProcess&) = delete;

    /// The output of another process with a command.
    std::string command(const std::vector<std::string>& words) const;
    /// Seconds from the start to the end of the first `status` that says so. Throws after a minute.
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
