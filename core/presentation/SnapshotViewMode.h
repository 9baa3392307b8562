#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// What an open named snapshot is asked: what was recorded since, or how the state of then
/// differs from the latest one. The raw value is also the label.
enum class SnapshotViewMode { timeline, states };

template <>
inline constexpr auto json::rawValues<SnapshotViewMode> =
    std::to_array<json::RawValue<SnapshotViewMode>>({
        {SnapshotViewMode::timeline, "Timeline"},
        {SnapshotViewMode::states, "Compare States"},
    });

} // namespace tidemark
