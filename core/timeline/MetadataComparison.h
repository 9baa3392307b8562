#pragma once

#include "core/records/Change.h"
#include "core/records/MetadataReport.h"

#include <optional>
#include <vector>

/// Compares the reports of the additional sources, which `core/capture` reads.
namespace tidemark::MetadataComparison {

/// The items that appeared, disappeared or changed their value, in the order of the reports in
/// `after` and by path within each. Only two complete reports of the same scope are compared, so
/// items that could not be read are not reported as removed.
std::vector<Change> compare(const std::optional<std::vector<MetadataReport>>& before,
                            const std::optional<std::vector<MetadataReport>>& after);

} // namespace tidemark::MetadataComparison
