#pragma once

#include "core/base/Date.h"

#include <concepts>
#include <optional>
#include <utility>

namespace tidemark {

/// Debounces a state: reports only changes that last. A value other than the accepted one is a
/// candidate, and is accepted if it is still the last one received after `delay`. The first value
/// to last that long becomes the starting point without a transition. The caller passes the time to
/// each call; in the application, `SettlingTimer` waits and calls `settle`.
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

    /// `settlingTime` is the delay in seconds; `accepted` is the starting point, if there is one.
    explicit SettledTransition(double settlingTime, std::optional<Value> accepted = {})
        : settlingTime(settlingTime), accepted(std::move(accepted)) {}

    /// The last accepted value; absent before there is a starting point.
    const std::optional<Value>& baseline() const { return accepted; }
    /// The value that is waiting to be accepted, and when it was first seen.
    const std::optional<Candidate>& candidate() const { return waiting; }
    double delay() const { return settlingTime; }

    /// Takes one observed value.
    void receive(Value value, Date at) {
        if (accepted == value)
            waiting.reset();
        else if (!waiting || !(waiting->value == value))
            waiting.emplace(Candidate{std::move(value), at});
    }

    /// Accepts the candidate if it has lasted for `delay` at the time `at`. Absent when nothing was
    /// accepted, and for the starting point. The caller computes `at` as the time of an observation
    /// plus the monotonic seconds since then, because the wall clock may have been set in between.
    std::optional<Transition> settle(Date at) {
        if (!waiting || settlingTime > at - waiting->since)
            return std::nullopt;
        auto before = std::exchange(accepted, waiting->value);
        const auto settled = *std::exchange(waiting, std::nullopt);
        if (!before)
            return std::nullopt;
        return Transition{*std::move(before), settled.value, settled.since};
    }

    /// Forgets all values: the next one accepted is a new starting point.
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
