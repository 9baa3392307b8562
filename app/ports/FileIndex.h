#pragma once

#include "core/memory/IndexedFileObservation.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace tidemark {

/// Finds files that were used, changed or downloaded recently, by their metadata only. Finding them
/// does not block the event loop. Main thread only.
class FileIndex {
public:
    /// If there are more matches, only the newest are reported.
    static constexpr std::size_t mostMatches = 2'000;

    struct Scope {
        /// Only files with a date at or after this are matches.
        Date since;
        /// The folders whose files are matches, with their subfolders; absent for all files that
        /// the system has an index of.
        std::optional<std::vector<std::filesystem::path>> folders;
    };
    struct Matches {
        /// In the first call all matches, in later calls those that are new or have changed; sorted
        /// from the newest, and never more than the newest `mostMatches`.
        std::vector<IndexedFileObservation> files;
        /// False when the system reports only some of the changes as they happen; the others are
        /// found later, by looking again.
        bool isLive = true;
        /// True when the index has stopped because of a failure; nothing follows.
        bool hasStopped = false;
    };
    using Found = std::function<void(Matches)>;

    virtual ~FileIndex() = default;

    /// Starts to find files; may be called once, and again after `stop`. `found` is called from the
    /// event loop when all have been found, even if there are none, and after that for changes, at
    /// most once every few seconds. False when the index can't be read.
    virtual bool start(Scope scope, Found found) = 0;
    /// `found` is not called any more.
    virtual void stop() = 0;
};

} // namespace tidemark
