#pragma once

#include "core/base/Error.h"
#include "core/records/Event.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace tidemark {

/// What the report of the operating system's installations yielded.
struct InstallationPreview {
    /// Latest first.
    std::vector<InstallationRecord> records;
    /// Entries of the report that could not be understood.
    std::size_t skippedRecords = 0;
    Date since;
    Date through;
    /// Entries from before `since` or after `through`.
    std::size_t outsideWindowRecords = 0;

    bool operator==(const InstallationPreview&) const = default;
};

/// The installations that the operating system itself remembers: a partial history of the last 7
/// days, from the JSON report of its profiler tool, or from the log of its package manager in the
/// same shape.
namespace InstallationHistory {

class ImportError : public Error {
public:
    enum class Kind { reportFailed, invalidReport, tooLarge };

    explicit ImportError(Kind which);
    Kind kind() const { return reason; }

private:
    Kind reason;
};

/// How `collect` runs the report tool; tests put a script of their own in its place.
struct ReportTool {
    std::filesystem::path path = "/usr/sbin/system_profiler";
    /// The tool is asked to finish in 20 seconds. One that is still running after this many is
    /// ended, and its report counts as failed.
    double timeLimit = 30;
    /// How many seconds it may take to end when it is asked to.
    double terminationGrace = 1;
};

/// The logs of Debian's package manager; tests put files of their own in their place.
struct PackageLog {
    std::filesystem::path path = "/var/log/dpkg.log";
    /// What was installed together, and what of it automatically. It may be missing.
    std::filesystem::path transactions = "/var/log/apt/history.log";
    /// Bytes of each, with the older logs beside it, that are looked at.
    std::size_t limit = 16'777'216;
};

/// What this system remembers of the 7 days before `now`; no records where it keeps no such
/// memory. Blocks; not for the main thread. Throws `ImportError`, or `Error` when a report tool
/// can't be started.
InstallationPreview collect(Date now);

/// The same from the report tool, which is never left running.
InstallationPreview collect(Date now, const ReportTool& tool);

/// The same from a package manager's log and its predecessors, which are only read. No such log is
/// no records.
InstallationPreview collect(Date now, const PackageLog& log);

/// Reads a report. Throws `ImportError` of kind `invalidReport` when it has another shape.
InstallationPreview parse(std::string_view report, Date since, Date through);

/// The timeline's entry for a record.
Event event(const InstallationRecord& record);

} // namespace InstallationHistory

} // namespace tidemark
