#pragma once

#include "core/capture/Inventory.h"
#include "core/capture/ReadingBudget.h"

#include <set>
#include <string>
#include <utility>

namespace tidemark {

/// The state of reading one root of an inventory: whether it may continue and which paths are left
/// out of comparison. A root that was not read to its end for any reason is incomplete.
class RootReading {
public:
    /// If more paths than this are left out below one root, they are not listed and the root is
    /// incomplete.
    static constexpr std::size_t mostExcludedPaths = 10'000;

    /// If more bytes than this are kept in memory for one root, it is incomplete as well.
    static constexpr std::size_t mostHeldBytes = std::size_t{64} << 20;

    explicit RootReading(ReadingBudget time) : time(std::move(time)) {}

    /// Whether another entry may be read; if not, marks the root as incomplete.
    bool mayContinue() {
        if (excluded.size() <= mostExcludedPaths && held <= mostHeldBytes && !time.isSpent())
            return true;
        complete = false;
        return false;
    }
    /// Marks the root as incomplete. The rest of it may still be read.
    void fail() { complete = false; }
    /// Counts bytes that are kept in memory until the whole family was read.
    void hold(std::size_t bytes) { held += bytes; }
    /// Leaves one path out of comparison.
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
    std::size_t held = 0;
    bool complete = true;
};

} // namespace tidemark
