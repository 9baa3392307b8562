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
    static constexpr std::size_t mostFolders = 2'000;
    /// `mostFolders`, or an eighth of the number that the system allows the user if that is less.
    static std::size_t standardBudget();

    struct Event {
        enum class Kind {
            /// A file was written and closed.
            written,
            /// A file was renamed or moved to this path. `isFromElsewhere` is true if it was in
            /// another folder before.
            movedIn,
            /// A folder was created in a watched one or moved into it.
            newFolder,
            /// A watched folder was deleted or unmounted, or was moved out of a folder that is not
            /// watched.
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

    /// Starts to watch a folder, or updates the path of one that is watched. Returns false when it
    /// can't be watched, for example because a limit is reached.
    bool add(const std::filesystem::path& folder);
    /// The descriptor that becomes readable when there are events; −1 when nothing can be watched.
    int descriptor() const { return notifications.get(); }
    /// Returns the events since the last call; of more than about 20 000, the first ones, and the
    /// next call returns the others. Does not wait for events.
    Events read();
    std::size_t size() const { return folders.size(); }

private:
    struct Raw;

    void handle(const Raw& event, Events& result);
    void removeBelow(const std::filesystem::path& folder);

    const std::size_t budget;
    FileDescriptor notifications;
    /// The watched folders, by the number that the system gave to each watch.
    std::unordered_map<int, std::filesystem::path> folders;
    /// The last rename of a file in a watched folder: the number that the system gave to it, and
    /// the number of the watch of the folder that the file was in.
    std::uint32_t lastRename = 0;
    int lastRenameFolder = -1;
};

} // namespace tidemark
