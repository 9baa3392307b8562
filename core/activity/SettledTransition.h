#pragma once

#include "core/base/Date.h"

#include <concepts>
#include <optional>
#include <utility>

namespace tidemark {

/// A state that flaps, cut down to the changes that last. A value other than the accepted one is
/// held as a candidate, and counts only when it still stands after `delay`. The first value to
/// stand that long becomes the starting point without a transition. Has no clock and no timer of
/// its own: `SettlingTimer` of the application waits, and says what to call `settle` with.
template <std::equality_comparable Value>
class SettledTransition {
public:
    struct Transition {
        Value before;
        Value after;
        /// When `after` was first seen, which is earlier than when it settled.
        Date firstObserved;

        bool operator==(const Transition&) const = default;
    };
    struct Candidate {
        Value value;
        Date since;

        bool operator==(const Candidate&) const = default;
    };

    /// `seconds` is the delay; with a `start` the comparison begins at once.
    explicit SettledTransition(double seconds, std::optional<Value> start = {})
        : settlingTime(seconds), accepted(std::move(start)) {}

    /// The last accepted value; absent without a starting point.
    const std::optional<Value>& baseline() const { return accepted; }
    /// The value that waits, with when it was first seen.
    const std::optional<Candidate>& candidate() const { return waiting; }
    double delay() const { return settlingTime; }

    /// Takes one observation.
    void receive(Value value, Date at) {
        if (accepted == value)
            waiting.reset();
        else if (!waiting || !(waiting->value == value))
            waiting.emplace(Candidate{std::move(value), at});
    }

    /// Accepts the candidate when it has stood for `delay`. Absent when nothing settled, or when
    /// what settled is the starting point. `at` is the time of the observation plus the monotonic
    /// seconds since then, and not what the wall clock shows, which may have been set in between.
    std::optional<Transition> settle(Date at) {
        if (!waiting || settlingTime > at - waiting->since)
            return std::nullopt;
        auto before = std::exchange(accepted, waiting->value);
        const auto settled = *std::exchange(waiting, std::nullopt);
        if (!before)
            return std::nullopt;
        return Transition{*std::move(before), settled.value, settled.since};
    }

    /// Forgets all values: the next one to settle is a new starting point.
    void reset() {
        accepted.reset();
        waiting.reset();
    }

private:
    double settlingTime;
    std::optional<Value> accepted;
    std::optional<Candidate> waiting;
};

} // namespace tidemark
