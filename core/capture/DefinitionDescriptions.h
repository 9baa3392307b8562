#pragma once

#include "core/records/BackgroundItem.h"

#include <string>
#include <vector>

namespace tidemark::DefinitionDescriptions {

/// One line per changed key: with both values where both are stored, such as "Keep running:
/// Conditional → Yes", otherwise without, such as "Environment settings changed".
std::vector<std::string> changeDescriptions(const BackgroundItem& before,
                                            const BackgroundItem& after);

} // namespace tidemark::DefinitionDescriptions
