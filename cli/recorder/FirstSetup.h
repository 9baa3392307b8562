#pragma once

#include "cli/recorder/Recorder.h"

#include <string>

namespace tidemark {

/// The choice of folders at a first start: asks on a terminal, showing what can be read. Without
/// a terminal it says that the folders are still to be chosen. Empty when the set-up was done
/// before, or is left to `tidemark folders`.
std::string firstSetup(Recorder& recorder);

} // namespace tidemark
