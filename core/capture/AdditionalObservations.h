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

inline constexpr std::size_t mostEntries = 5'000;
inline constexpr double secondsPerSource = 3;
inline constexpr std::size_t largestConfiguration = 1'048'576;

/// One report per cellar when `homebrew` is set, then one per folder of diagnostic reports when
/// `diagnostics` is, of which the names alone are read, then one per configuration file. Never
/// fails: each report says whether its source was read completely, which a stop or a source that
/// takes too long prevents.
std::vector<MetadataReport> collect(bool homebrew, bool diagnostics,
                                    const std::vector<std::filesystem::path>& configurationPaths,
                                    const AdditionalPlaces& places, Clock& clock,
                                    const std::stop_token& stop = {});

/// The name of a configuration file that is shown.
std::string configurationLabel(const std::filesystem::path& path);

} // namespace tidemark::AdditionalObservations
