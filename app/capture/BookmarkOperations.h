#pragma once

#include "core/base/Data.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tidemark {

/// Functions that remember folders across runs of the program and open them again. They may
/// block and are called on any thread. `create` and `resolve` throw `Error` on failure; `start`
/// returns false. The caller of a successful `start` has to call `stop`.
struct BookmarkOperations {
    struct Resolved {
        std::filesystem::path url;
        /// True when the folder was found but the bookmark should be created again.
        bool stale = false;
        /// Why the folder of the bookmark is not at its path now, as a sentence. `start` must not
        /// be called then; the bookmark stays valid.
        std::optional<std::string> failure{};
    };

    std::function<Data(const std::filesystem::path&)> create;
    std::function<Resolved(const Data&)> resolve;
    std::function<bool(const std::filesystem::path&)> start;
    std::function<void(const std::filesystem::path&)> stop;

    /// For a process with all rights of its user. A bookmark is a small JSON document with the
    /// bytes of the path and the identity of the folder. It resolves to the path even when nothing
    /// is there, since a volume may be mounted again; it is stale when another folder is there. It
    /// has a `failure` when a link is there, or the empty mount point of a volume that is not
    /// mounted. `start` succeeds when the folder can be opened.
    static BookmarkOperations direct();
};

/// The sentence for a folder whose check failed or did not end in time.
inline constexpr const char* unansweredFolder = "Folder access was unavailable during the check.";

/// Why a folder can't be opened now, as a sentence; absent when it can. May block for long on a
/// network volume; not for the main thread.
std::optional<std::string> directoryAccessFailure(const std::filesystem::path& folder);

/// Why the folder of a bookmark can't be opened now, as a sentence; absent when it can. Blocks as
/// `directoryAccessFailure` does.
std::optional<std::string> bookmarkAccessFailure(const BookmarkOperations& operations,
                                                 const Data& bookmark);

} // namespace tidemark
