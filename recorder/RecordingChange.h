#pragma once

#include "core/capture/RecordingMode.h"
#include "recorder/CommandContext.h"

#include <string>

namespace tidemark {

/// Pauses or resumes all recording and returns the message for the user. Without a running recorder
/// it applies to the next one. Throws `Error`.
std::string changeRecording(const CommandContext& context, RecordingMode mode);

} // namespace tidemark
