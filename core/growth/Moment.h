#pragma once

#include "core/base/Calendar.h"
#include "core/journal/Journal.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A kept capture that a text selected.
struct Moment {
    Shared<Snapshot> snapshot;
    /// Its name, when it was selected as a named snapshot.
    std::optional<std::string> name{};
};

/// Two kept captures to compare, in any order of time.
struct CapturePair {
    Moment from;
    Moment to;
};

inline constexpr std::string_view momentHelp =
    "A name of a snapshot, a date (2026-05-31 or 2026-05-31T14:30), today, yesterday, how long ago "
    "(12h, 7d, 3w), @0 for the latest capture, @-3 for the third before it";

/// The kept capture that `text` selects, by the first of these rules that applies:
/// - the name or id of a named snapshot, or the id of a kept one;
/// - "@0" or "latest": the latest capture; "@-3": the third before it;
/// - "today", "yesterday", a date: the last capture of that local day;
/// - a date and time, or how long ago: the last capture at that time or before it.
/// Throws `Error` with a sentence that says why there is none and, for a day without a capture,
/// which captures are nearest.
Moment momentOf(const Journal& journal, std::string_view text, Date now, const Calendar& calendar);

/// "before the move (12 Mar 2026, 10:00:00)", or only the time.
std::string label(const Moment& moment, const Calendar& calendar);

/// The differences of the two states, newest first. Empty for one capture compared with itself.
std::vector<Shared<Event>> differencesOf(const CapturePair& pair);

/// The kept capture with this id, also that of a named snapshot; absent when none is kept.
std::optional<Moment> keptMoment(const Journal& journal, const Uuid& snapshot);

} // namespace tidemark
