#pragma once

#include "core/records/BackgroundItem.h"

#include <string>
#include <vector>

namespace tidemark::DefinitionDescriptions {

/// One line per changed key: with both values where they may be shown, such as
/// "Keep running: Conditional → Yes", and "Environment settings changed" where they may not.
std::vector<std::string> changeDescriptions(const BackgroundItem& before,
                                            const BackgroundItem& after);

} // namespace tidemark::DefinitionDescriptions
