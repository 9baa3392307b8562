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
    };

    std::function<Data(const std::filesystem::path&)> create;
    std::function<Resolved(const Data&)> resolve;
    std::function<bool(const std::filesystem::path&)> start;
    std::function<void(const std::filesystem::path&)> stop;

    /// For a process that may open whatever its user may. A bookmark is a small JSON document
    /// with the path, byte for byte, and the identity of the folder there. It resolves to that
    /// path even when nothing stands there, since a volume may come back; it is stale when
    /// another folder does, and can't be resolved while a link does. `start` succeeds when the
    /// folder can be opened.
    static BookmarkOperations direct();
};

/// Why a folder can't be opened at this moment, as a sentence; absent when it can. May block for
/// long on a network volume: never on the main thread.
std::optional<std::string> directoryAccessFailure(const std::filesystem::path& folder);

} // namespace tidemark
