#pragma once

#include "core/base/Date.h"
#include "core/base/Uuid.h"

#include <vector>

namespace tidemark {

/// The captures that the user marked, at most two. They stay marked when the history of another
/// size is shown.
class ComparedMoments {
public:
    struct Moment {
        Uuid snapshot;
        Date at;

        bool operator==(const Moment&) const = default;
    };

    /// Marks a capture, or removes its mark. When two others are marked, the one that was marked
    /// first loses its mark.
    void toggle(const Moment& moment);
    void clear() { marked.clear(); }
    /// The marked moments, in the order in which they were marked.
    const std::vector<Moment>& all() const { return marked; }
    bool isComplete() const { return marked.size() == 2; }
    /// The earlier and the later of the two moments. Call these only when `isComplete`.
    const Moment& earlier() const;
    const Moment& later() const;

private:
    std::vector<Moment> marked;
};

} // namespace tidemark
