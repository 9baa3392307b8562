#pragma once

#include "core/base/Date.h"

#include <set>
#include <string>
#include <string_view>

/// The installations in the log of pacman(8), as a report in the shape that `InstallationHistory`
/// reads:
///
///     [2024-05-01T12:00:00+0200] [ALPM] transaction started
///     [2024-05-01T12:00:01+0200] [ALPM] installed tide-gauge (2.0-1)
///     [2024-05-01T12:00:02+0200] [ALPM] upgraded harbour (4.1-1 -> 4.2-1)
///     [2024-05-01T12:00:02+0200] [ALPM] transaction completed
///
/// Before pacman 5.2 the time was "2019-05-01 12:00", in the zone of the machine.
namespace tidemark::PacmanLogReport {

/// The report of a text of whole lines, oldest first. The date of an installation is the start of
/// its transaction. `automatic` has the names of packages that were installed because others need
/// them. Lines of programs that a package runs appear between those of pacman and are skipped.
std::string make(std::string_view log, const std::set<std::string, std::less<>>& automatic,
                 Date since);

/// True when the first line with a time is from before `date`.
bool beginsBefore(std::string_view log, Date date);

} // namespace tidemark::PacmanLogReport
