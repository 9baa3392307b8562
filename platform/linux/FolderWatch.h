#pragma once

#include "core/base/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

namespace tidemark {

/// Notices changes in folders while they happen (inotify(7)). The number of watched folders is
/// limited: by a budget of its own, and by the system for all programs of the user together.
class FolderWatch {
public:
    /// At most this many folders, and at most an eighth of what the system allows the user.
    static constexpr std::size_t mostFolders = 2'000;
    static std::size_t standardBudget();

    struct Event {
        enum class Kind {
            /// A file was written and closed.
            written,
            /// A file got this name by a rename; in `isFromElsewhere` whether it was in another
            /// folder before.
            movedIn,
            /// There is another folder below a watched one.
            newFolder,
            /// A watched folder is not at its path any more.
            gone,
        };

        Kind kind;
        std::filesystem::path path;
        bool isFromElsewhere = false;
    };
    struct Events {
        std::vector<Event> events;
        /// The system has dropped events.
        bool isIncomplete = false;
    };

    explicit FolderWatch(std::size_t budget = standardBudget());

    /// Starts to watch a folder, or updates the path of one that is watched. False when it can't be
    /// watched, as beyond the limits.
    bool add(const std::filesystem::path& folder);
    /// Readable when there are events; −1 when nothing can be watched.
    int descriptor() const { return notifications.get(); }
    /// The events until now; of very many, the first. Does not wait.
    Events read();
    std::size_t size() const { return folders.size(); }

private:
    struct Raw;

    void handle(const Raw& event, Events& result);
    void removeBelow(const std::filesystem::path& folder);

    const std::size_t budget;
    FileDescriptor notifications;
    /// By the number that the system gave to the watch.
    std::unordered_map<int, std::filesystem::path> folders;
    /// The last rename out of a watched folder: its number and the folder.
    std::uint32_t lastRename = 0;
    int lastRenameFolder = -1;
};

} // namespace tidemark
