#pragma once

#include "core/records/BackgroundItem.h"

#include <string>
#include <vector>

/// Compares service definitions by their fingerprints, which `core/capture` makes.
namespace tidemark::DefinitionComparison {

/// The definition keys whose fingerprints differ or exist on one side only, in ascending order.
/// Empty when either item has no fingerprints, as in older records.
std::vector<std::string> changedKeys(const BackgroundItem& before, const BackgroundItem& after);

} // namespace tidemark::DefinitionComparison
