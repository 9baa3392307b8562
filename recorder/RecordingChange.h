#pragma once

#include "core/capture/RecordingMode.h"
#include "recorder/CommandContext.h"

#include <string>

namespace tidemark {

/// Pauses or resumes all recording, and returns what is to be said of it. Where no recorder runs,
/// it holds for the next one. Throws `Error`.
std::string changeRecording(const CommandContext& context, RecordingMode mode);

} // namespace tidemark
