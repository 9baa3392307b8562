#pragma once

#include "core/capture/Inventory.h"
#include "core/capture/ReadingBudget.h"

#include <set>
#include <string>
#include <utility>

namespace tidemark {

/// Reading one root of an inventory: whether it may go on, and what is left out of it. A root that
/// was not read to its end, for whatever reason, is incomplete.
class RootReading {
public:
    /// More paths than this below one root are not listed one by one: the root is incomplete.
    static constexpr std::size_t mostExcludedPaths = 10'000;

    explicit RootReading(ReadingBudget allowed) : time(std::move(allowed)) {}

    /// Whether a further entry may be read; if not, the root is incomplete.
    bool mayGoOn() {
        if (excluded.size() <= mostExcludedPaths && !time.isSpent())
            return true;
        complete = false;
        return false;
    }
    /// Something in the root can't be read; the rest of it still may be.
    void fail() { complete = false; }
    /// Leaves one path out of the inventory and of comparison.
    void exclude(std::string path) { excluded.insert(std::move(path)); }

    const ReadingBudget& budget() const { return time; }

    /// Adds the root at `path` to an inventory. Returns whether it is complete.
    template <class Record>
    bool finish(const std::string& path, Inventory<Record>& inventory) {
        if (excluded.size() > mostExcludedPaths) {
            complete = false;
            excluded.clear();
        }
        inventory.excludedPaths.merge(excluded);
        (complete ? inventory.roots : inventory.incompleteRoots).insert(path);
        return complete;
    }

private:
    ReadingBudget time;
    std::set<std::string> excluded;
    bool complete = true;
};

} // namespace tidemark
