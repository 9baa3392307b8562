#pragma once

#include "core/base/Date.h"

#include <string>
#include <string_view>

/// The installations in a log of dpkg(1), as a report in the shape that `InstallationHistory`
/// reads. A line of the log is "2024-05-01 12:00:00 status installed NAME:ARCHITECTURE VERSION",
/// in the local time of the machine, with other actions in the place of "status installed".
namespace tidemark::PackageLogReport {

/// The report of a text of whole lines, oldest first. An installation is an "install" or "upgrade"
/// that came to its end: the package is "installed" in the version that was asked for, and that is
/// its moment. Lines that no dpkg writes are entries that can't be read, unless they stand among
/// lines from before `since`, where nobody asks for them.
std::string make(std::string_view log, Date since);

/// True when the first line that can be read is from before `date`.
bool beginsBefore(std::string_view log, Date date);

} // namespace tidemark::PackageLogReport
