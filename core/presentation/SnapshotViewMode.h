#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// What an open named snapshot shows: the events recorded since, or the differences between its
/// state and the latest one. The raw value is also the label.
enum class SnapshotViewMode { timeline, states };

template <>
inline constexpr auto json::rawValues<SnapshotViewMode> =
    std::to_array<json::RawValue<SnapshotViewMode>>({
        {SnapshotViewMode::timeline, "Timeline"},
        {SnapshotViewMode::states, "Compare States"},
    });

} // namespace tidemark
