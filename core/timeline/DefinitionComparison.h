#pragma once

#include "core/records/BackgroundItem.h"

#include <string>
#include <vector>

/// Comparing definitions by their fingerprints alone. Making the fingerprints belongs to capture.
namespace tidemark::BackgroundDefinition {

/// The definition keys whose fingerprints differ or stand on one side only, ascending. Empty when
/// either item has no fingerprints: an older record says nothing about its definition.
std::vector<std::string> changedKeys(const BackgroundItem& before, const BackgroundItem& after);

} // namespace tidemark::BackgroundDefinition
