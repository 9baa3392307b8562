#pragma once

#include "core/base/FileDescriptor.h"

#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tidemark {

/// A child process whose standard output is read; its standard error is discarded. The destructor
/// terminates it if it is still running.
class ReportProcess {
public:
    /// Starts `program`; throws `Error` when that fails. After `timeLimit` seconds reading stops
    /// and the process counts as failed. The process is killed when it has not ended
    /// `terminationGrace` seconds after SIGTERM.
    ReportProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  double timeLimit, double terminationGrace);
    ~ReportProcess();
    ReportProcess(const ReportProcess&) = delete;
    ReportProcess& operator=(const ReportProcess&) = delete;

    /// The output of the process, up to the time limit. If it exceeds `limit` bytes, the process is
    /// terminated; the caller recognises this by a result longer than `limit`.
    std::string readOutput(std::size_t limit);

    /// Waits for the process to end, and terminates it at the time limit. True when it exited with
    /// status 0 before that, and its output was read whole.
    bool succeeded();

private:
    /// A wait status for which `WIFEXITED` is false.
    static constexpr int unknownStatus = -1;

    /// True when the process has ended.
    bool waitUntil(double until);
    void terminate();

    pid_t process = -1;
    FileDescriptor output;
    double deadline = 0;
    double terminationGrace = 0;
    /// True when reading ended before the end of the output.
    bool isCut = false;
    int status = unknownStatus;
};

} // namespace tidemark
