#pragma once

#include "core/base/Calendar.h"
#include "core/presentation/SnapshotViewMode.h"
#include "core/records/Snapshot.h"

#include <string>
#include <vector>

namespace tidemark {

/// The bar above the list while a named snapshot is open.
struct SnapshotBar {
    struct Mode {
        SnapshotViewMode mode;
        std::string label;
        bool isSelected = false;

        bool operator==(const Mode&) const = default;
    };

    /// The name, and when the snapshot was taken.
    std::string title;
    std::vector<Mode> modes;
    /// A note on the compared states, the running comparison, or events that may be missing; may be
    /// empty.
    std::string note;

    bool operator==(const SnapshotBar&) const = default;
};

/// The state from which the bar is made.
struct OpenSnapshot {
    const Baseline& snapshot;
    /// Null when nothing was captured yet.
    const Snapshot* latest;
    SnapshotViewMode mode;
    bool isComparing;
    /// True when events since the snapshot may be missing.
    bool isIncomplete;
};
SnapshotBar snapshotBar(const OpenSnapshot& open, const Calendar& calendar);

/// The question before a snapshot is deleted.
struct SnapshotDeletion {
    std::string title;
    std::string explanation;
    std::string confirmLabel;

    static SnapshotDeletion of(const Baseline& snapshot);
};

} // namespace tidemark
