#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <vector>

namespace tidemark {

/// A moment at which recording began, was still going on, paused, resumed or ended. These records
/// explain why nothing was observed in a period.
struct RecorderRun {
    enum class Kind {
        /// The recorder started, with recording paused or not.
        started,
        /// It was still recording at this time (see `append`).
        running,
        /// The program ended.
        stopped,
        /// The user paused recording, or resumed it.
        paused,
        resumed,
    };
    /// Only the newest records are kept, at most this many.
    static constexpr std::size_t limit = 2'000;

    Kind kind = Kind::started;
    Date timestamp;

    bool operator==(const RecorderRun&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"kind", &RecorderRun::kind},
            Field{"timestamp", &RecorderRun::timestamp},
        };
    }
};

template <>
inline constexpr auto json::rawValues<RecorderRun::Kind> =
    std::to_array<json::RawValue<RecorderRun::Kind>>({
        {RecorderRun::Kind::started, "started"},
        {RecorderRun::Kind::running, "running"},
        {RecorderRun::Kind::stopped, "stopped"},
        {RecorderRun::Kind::paused, "paused"},
        {RecorderRun::Kind::resumed, "resumed"},
    });

/// Adds a record, within the limit. If this one and the last one are both `running`, it replaces
/// the last one.
void append(std::vector<RecorderRun>& runs, RecorderRun next);

/// Whether recording was paused, and not resumed, according to the records.
bool isPaused(const std::vector<RecorderRun>& runs);

} // namespace tidemark
