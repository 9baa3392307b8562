#pragma once

#include "core/base/Clock.h"
#include "core/capture/AdditionalPlaces.h"
#include "core/records/MetadataReport.h"

#include <filesystem>
#include <stop_token>
#include <string_view>
#include <vector>

/// Reads the additional sources that the user can turn on: installed Homebrew formulas, diagnostic
/// reports, and digests of chosen configuration files.
namespace tidemark::AdditionalObservations {

/// Limits for one source: entries of a folder, seconds, and bytes of a configuration file.
inline constexpr std::size_t mostEntries = 5'000;
inline constexpr double secondsPerSource = 3;
inline constexpr std::size_t largestConfiguration = 1'048'576;

/// One report per cellar if `homebrew` is set, then one per folder of diagnostic reports if
/// `diagnostics` is set, then one per configuration file. Of diagnostic reports only the names are
/// read. Never fails: a report is marked as incomplete when its source could not be read or is
/// beyond a limit, or a stop was requested. A source that does not exist is complete and empty.
std::vector<MetadataReport> collect(bool homebrew, bool diagnostics,
                                    const std::vector<std::filesystem::path>& configurationPaths,
                                    const AdditionalPlaces& places, Clock& clock,
                                    const std::stop_token& stop = {});

/// The name that is shown for a configuration file.
std::string configurationLabel(const std::filesystem::path& path);

} // namespace tidemark::AdditionalObservations
