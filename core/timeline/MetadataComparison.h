#pragma once

#include "core/records/Change.h"
#include "core/records/MetadataReport.h"

#include <optional>
#include <vector>

/// Comparing the additional sources. Reading them belongs to capture.
namespace tidemark::AdditionalObservations {

/// The items that appeared, vanished or changed their value, report by report in the order of
/// `after`, by path within a report. Only reports of one scope that both are complete are
/// compared, so what could not be read neither appears nor disappears.
std::vector<Change> compare(const std::optional<std::vector<MetadataReport>>& before,
                            const std::optional<std::vector<MetadataReport>>& after);

} // namespace tidemark::AdditionalObservations
