#pragma once

#include "core/growth/StorageSubject.h"
#include "core/records/Event.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// The size of one subject over time, as data for a drawing, a table and a screen reader. Points
/// come from the kept snapshots and, before and after them, from the daily sizes. Two points are
/// only joined where nothing that was due between them is missing: snapshots one after the other
/// within the expected interval of captures, daily sizes on consecutive days, of the same volume
/// and measured in the same way.
struct StorageChart {
    struct Point {
        /// When the size was measured.
        Date at;
        std::int64_t bytes = 0;
        /// The snapshot that has this size; absent for the size of a day.
        std::optional<Uuid> snapshot{};
        /// Index in `lines`.
        std::size_t line = 0;

        bool operator==(const Point&) const = default;
    };
    /// Points that are joined: from `first`, `count` of them, at least one.
    struct Line {
        std::size_t first = 0;
        std::size_t count = 0;

        bool operator==(const Line&) const = default;
    };
    /// A time without a size, between two lines or from the last one to the end of the window.
    struct Gap {
        Date start;
        Date end;
        /// "3 days without a size".
        std::string text;

        bool operator==(const Gap&) const = default;
    };
    /// A time at which the sizes before it can't be compared with those after it.
    struct Break {
        /// The time of the first point after it.
        Date at;
        /// "New volume: Data", or "Measured in another way".
        std::string text;

        bool operator==(const Break&) const = default;
    };
    /// A named snapshot.
    struct Flag {
        Date at;
        /// Id of the `Baseline`, and of its snapshot.
        Uuid baseline;
        Uuid snapshot;
        std::string name;
        /// Absent when the snapshot does not have the size.
        std::optional<std::int64_t> bytes{};

        bool operator==(const Flag&) const = default;
    };
    /// An event that concerns the subject. It happened at some time from `intervalStart` to
    /// `timestamp` of the event.
    struct Mark {
        Shared<Event> event;
        /// The title that is shown.
        std::string title;

        bool operator==(const Mark&) const = default;
    };

    StorageSubject subject;
    /// The shown period. `since` is the time of the first point where none was given.
    Date since;
    Date through;
    /// In order of time.
    std::vector<Point> points;
    std::vector<Line> lines;
    std::vector<Gap> gaps;
    std::vector<Break> breaks;
    std::vector<Flag> flags;
    std::vector<Mark> marks;
    /// The smallest and the largest size; 0 without points.
    std::int64_t least = 0;
    std::int64_t most = 0;
    /// Total size of the volume, for free space; absent where not known.
    std::optional<std::int64_t> capacity{};

    /// The chart of the period after `since`, or of everything without it, up to `through`. A pure
    /// function. With 720 snapshots of 50 folders it takes a few milliseconds.
    static StorageChart of(const GrowthSource& source, const StorageSubject& subject,
                           std::optional<Date> since, Date through, const Calendar& calendar);

    /// Index of the point nearest in time; absent without points.
    std::optional<std::size_t> nearestPoint(Date at) const;
    /// Index of the mark nearest in time, within `tolerance` seconds.
    std::optional<std::size_t> nearestMark(Date at, double tolerance) const;
    /// Index of the gap that contains `at`, if one does.
    std::optional<std::size_t> gapAt(Date at) const;
    /// Index of the point `steps` points after `from`, but not beyond the first and the last one.
    /// Without `from`, the first point for a positive `steps`, else the last. Absent without
    /// points.
    std::optional<std::size_t> moved(std::optional<std::size_t> from, std::ptrdiff_t steps) const;

    bool operator==(const StorageChart&) const = default;
};

} // namespace tidemark
