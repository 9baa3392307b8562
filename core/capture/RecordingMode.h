#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// Whether anything is collected.
enum class RecordingMode { recording, paused };

template <>
inline constexpr auto json::rawValues<RecordingMode> =
    std::to_array<json::RawValue<RecordingMode>>({
        {RecordingMode::recording, "recording"},
        {RecordingMode::paused, "paused"},
    });

} // namespace tidemark
