#pragma once

#include "core/base/FileDescriptor.h"

#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tidemark {

/// A child process whose standard output is read, with its standard error thrown away. It is ended
/// with this object, whatever it does.
class ReportProcess {
public:
    /// Starts `program`. Throws `Error` when it can't be started. After `timeLimit` seconds
    /// reading stops and the process counts as failed. One that was asked to end is killed after
    /// `grace` seconds more.
    ReportProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  double timeLimit, double grace);
    ~ReportProcess();
    ReportProcess(const ReportProcess&) = delete;
    ReportProcess& operator=(const ReportProcess&) = delete;

    /// All that the process writes until it closes its output; more than `limit` bytes come back
    /// when it wrote more, and then it is ended.
    std::string readOutput(std::size_t limit);

    /// Waits for the end; true when the process ended by itself with status 0 in time.
    bool succeeded();

private:
    /// A wait status that is no exit.
    static constexpr int unknownStatus = -1;

    /// True once the process is gone.
    bool waitUntil(double until);
    void terminate();

    pid_t process = -1;
    FileDescriptor output;
    double deadline = 0;
    double terminationGrace = 0;
    int status = unknownStatus;
};

} // namespace tidemark
