#include "recorder/NamedSnapshot.h"

#include "core/base/Error.h"
#include "core/journal/Journal.h"

namespace tidemark {

Baseline namedSnapshot(const Journal& journal, const std::string& name) {
    std::vector<const Baseline*> found;
    for (const auto& baseline : journal.baselines) {
        if (baseline.id.text() == name)
            return baseline;
        if (baseline.name == name)
            found.push_back(&baseline);
    }
    if (found.empty())
        throw Error("There is no snapshot \"" + name + "\"; tidemark snapshot list shows them.");
    if (found.size() > 1)
        throw Error("Several snapshots are called \"" + name
                    + "\"; give the identifier that tidemark snapshot list shows.");
    return *found.front();
}

} // namespace tidemark
