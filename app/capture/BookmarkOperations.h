#pragma once

#include "core/base/Data.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tidemark {

/// How folders are remembered and opened again. A bookmark outlives the run; what is started is
/// stopped. The functions block and are called on any thread; those that may fail throw `Error`.
struct BookmarkOperations {
    struct Resolved {
        std::filesystem::path url;
        /// It is found, but the bookmark should be made anew.
        bool stale = false;
        /// Why what stands there at this moment is not the folder of the bookmark, as a sentence.
        /// It is not to be started, and the bookmark keeps.
        std::optional<std::string> failure{};
    };

    std::function<Data(const std::filesystem::path&)> create;
    std::function<Resolved(const Data&)> resolve;
    std::function<bool(const std::filesystem::path&)> start;
    std::function<void(const std::filesystem::path&)> stop;

    /// For a process that may open whatever its user may. A bookmark is a small JSON document
    /// with the path, byte for byte, and the identity of the folder there. It resolves to that
    /// path even when nothing stands there, since a volume may come back; it is stale when
    /// another folder does. A link there is no folder, and neither is the empty one that shows
    /// below a volume that is not mounted. `start` succeeds when the folder can be opened.
    static BookmarkOperations direct();
};

/// What is said of a folder of which nothing is known: it gave no answer, or none in time.
inline constexpr const char* unansweredFolder = "Folder access was unavailable during the check.";

/// Why a folder can't be opened at this moment, as a sentence; absent when it can. May block for
/// long on a network volume: never on the main thread.
std::optional<std::string> directoryAccessFailure(const std::filesystem::path& folder);

/// The same of the folder that a bookmark stands for.
std::optional<std::string> bookmarkAccessFailure(const BookmarkOperations& operations,
                                                 const Data& bookmark);

} // namespace tidemark
