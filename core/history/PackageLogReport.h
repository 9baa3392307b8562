#pragma once

#include "core/history/AptHistory.h"

#include <string>
#include <string_view>

/// Converts a log of dpkg(1) into a report in the form that `InstallationHistory` reads. A line of
/// the log is "2024-05-01 12:00:00 status installed NAME:ARCHITECTURE VERSION", in the local time
/// of the machine, with other actions instead of "status installed".
namespace tidemark::PackageLogReport {

/// The report of a log of whole lines, oldest first. An installation is a completed "install" or
/// "upgrade": the package reached the status "installed" in the requested version. Its date is the
/// start of its apt transaction or, where apt recorded none, of the run of dpkg, so that packages
/// installed together have the same date; its source tells manual and automatic installation apart.
/// Lines in another format become entries that can't be read, except among lines from before
/// `since`.
std::string make(std::string_view log, const std::vector<PackageTransaction>& transactions,
                 Date since);

/// True when the first line that can be parsed is from before `date`.
bool beginsBefore(std::string_view log, Date date);

} // namespace tidemark::PackageLogReport
