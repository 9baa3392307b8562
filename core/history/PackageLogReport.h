#pragma once

#include "core/history/AptHistory.h"

#include <string>
#include <string_view>

/// The installations in a log of dpkg(1), as a report in the shape that `InstallationHistory`
/// reads. A line of the log is "2024-05-01 12:00:00 status installed NAME:ARCHITECTURE VERSION",
/// in the local time of the machine, with other actions in the place of "status installed".
namespace tidemark::PackageLogReport {

/// The report of a text of whole lines, oldest first. An installation is an "install" or "upgrade"
/// that was completed: the package is "installed" in the version that was asked for. Its date is
/// the start of the transaction that it was part of, or, where apt recorded none, of that run of
/// dpkg, so that what was installed together stands together; its source says whether it came
/// along automatically. Lines that no dpkg writes are entries that can't be read, unless they stand
/// among lines from before `since`, which nobody asks for.
std::string make(std::string_view log, const std::vector<PackageTransaction>& transactions,
                 Date since);

/// True when the first line that can be read is from before `date`.
bool beginsBefore(std::string_view log, Date date);

} // namespace tidemark::PackageLogReport
