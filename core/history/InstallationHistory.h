#pragma once

#include "core/base/Error.h"
#include "core/base/MachineFiles.h"
#include "core/records/Event.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace tidemark {

/// The records read from a report of the operating system's installations.
struct InstallationPreview {
    /// Latest first.
    std::vector<InstallationRecord> records;
    /// Number of entries of the report that could not be parsed.
    std::size_t skippedRecords = 0;
    Date since;
    Date through;
    /// Number of entries from before `since` or after `through`.
    std::size_t outsideWindowRecords = 0;

    bool operator==(const InstallationPreview&) const = default;
};

/// Reads the installations of the last 7 days from the operating system: from the JSON report of
/// its profiler tool, or from the log or database of its package manager brought into the same
/// form. The history can be incomplete.
namespace InstallationHistory {

class ImportError : public Error {
public:
    enum class Kind { reportFailed, invalidReport, tooLarge };

    explicit ImportError(Kind kind);
    Kind kind() const { return reason; }

private:
    Kind reason;
};

/// How `collect` runs the report tool. Tests use a script instead.
struct ReportTool {
    std::filesystem::path path = "/usr/sbin/system_profiler";
    /// Seconds after which the tool is terminated and its report counts as failed. The tool itself
    /// is given a time limit of 20 seconds.
    double timeLimit = 30;
    /// Seconds from asking the tool to terminate to killing it.
    double terminationGrace = 1;
};

/// The logs of Debian's package manager. Tests use files of their own.
struct PackageLog {
    std::filesystem::path path = "/var/log/dpkg.log";
    /// The log of apt, which groups packages into transactions and marks new automatic ones. It may
    /// be missing.
    std::filesystem::path transactions = "/var/log/apt/history.log";
    /// The file in which apt notes the packages that are installed only because others need them.
    /// It may be missing.
    std::filesystem::path states = "/var/lib/apt/extended_states";
    /// The most bytes to read of each log together with its rotated predecessors, and of the
    /// states.
    std::size_t limit = 16'777'216;
};

/// The log of pacman(8), and the machine whose package database records which packages were
/// installed only because others needed them.
struct PacmanLog {
    std::filesystem::path path = "/var/log/pacman.log";
    std::size_t limit = 16'777'216;
    MachineFiles machine{};
};

/// The installations of the 7 days before `now`; no records when the system keeps no such log.
/// Blocks; not for the main thread. Throws `ImportError`, or `Error` when the report tool can't be
/// started.
InstallationPreview collect(Date now);

/// Reads the recent installations from this report tool, which has ended when the function returns.
InstallationPreview collect(Date now, const ReportTool& tool);

/// Reads the recent installations from a package manager's log and its rotated predecessors.
/// Without such a log there are no records.
InstallationPreview collect(Date now, const PackageLog& log);

/// Reads the recent installations from pacman's log. Without such a log there are no records.
InstallationPreview collect(Date now, const PacmanLog& log);

/// Reads the recent installations from the database of rpm and the histories of dnf on a machine.
InstallationPreview collect(Date now, const MachineFiles& machine);

/// The records of several sources for one period, latest first. The list must not be empty.
InstallationPreview merged(std::vector<InstallationPreview> previews);

/// Parses a report. Throws `ImportError` of kind `invalidReport` when it does not have the expected
/// form.
InstallationPreview parse(std::string_view report, Date since, Date through);

/// The event of a record.
Event event(const InstallationRecord& record);

} // namespace InstallationHistory

} // namespace tidemark
