#include "platform/linux/FolderWatch.h"

#include "core/base/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>

#include <sys/inotify.h>

namespace tidemark {

namespace {

constexpr std::uint32_t wanted = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE
                                 | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_DONT_FOLLOW;

/// The number of events after which `read` returns although there may be more, so that it ends even
/// while events keep coming. The system's queue holds fewer by default.
constexpr std::size_t mostEvents = 20'000;

std::size_t limitOfUser() {
    std::size_t limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_user_watches") >> limit;
    return limit;
}

} // namespace

struct FolderWatch::Raw {
    int watch;
    std::uint32_t mask;
    std::uint32_t rename;
    std::string name;
};

std::size_t FolderWatch::standardBudget() {
    return std::min(mostFolders, limitOfUser() / 8);
}

FolderWatch::FolderWatch(std::size_t budget)
    : budget(budget), notifications(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

bool FolderWatch::add(const std::filesystem::path& folder) {
    if (!notifications)
        return false;
    const int watch = ::inotify_add_watch(notifications.get(), folder.c_str(), wanted);
    if (watch < 0)
        return false;
    // Only the number of the watch shows whether the folder is watched already.
    if (folders.size() >= budget && !folders.contains(watch)) {
        ::inotify_rm_watch(notifications.get(), watch);
        return false;
    }
    folders[watch] = folder;
    return true;
}

FolderWatch::Events FolderWatch::read() {
    // The start of an event in the buffer must be aligned.
    alignas(inotify_event) std::array<char, std::size_t{64} * 1024> buffer;
    Events result;
    for (std::size_t handled = 0; handled < mostEvents;) {
        const ssize_t count = ::read(notifications.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count);) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + i);
            // The name is filled up with zero bytes.
            handle({event->wd, event->mask, event->cookie,
                    event->len > 0 ? std::string(event->name) : std::string()},
                   result);
            i += sizeof(inotify_event) + event->len;
            ++handled;
        }
    }
    return result;
}

void FolderWatch::handle(const Raw& event, Events& result) {
    using Kind = Event::Kind;
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        result.isIncomplete = true;
        return;
    }
    const auto found = folders.find(event.watch);
    if (found == folders.end())
        return;
    const std::filesystem::path folder = found->second;
    const std::filesystem::path path = folder / event.name;
    const bool isFolder = (event.mask & IN_ISDIR) != 0;
    if ((event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) != 0) {
        // A moved folder takes its subfolders along. A removed one was empty, and its path may have
        // a new watch already, so only this watch is dropped.
        if ((event.mask & IN_MOVE_SELF) != 0)
            removeBelow(folder);
        else
            folders.erase(found);
        result.events.push_back({Kind::gone, folder});
    } else if ((event.mask & IN_MOVED_FROM) != 0) {
        lastRename = event.rename;
        lastRenameFolder = event.watch;
        if (isFolder)
            removeBelow(path);
    } else if (isFolder && (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0) {
        result.events.push_back({Kind::newFolder, path});
    } else if ((event.mask & IN_MOVED_TO) != 0) {
        const bool isSameFolder = event.rename == lastRename && event.watch == lastRenameFolder;
        result.events.push_back({Kind::movedIn, path, !isSameFolder});
    } else if ((event.mask & IN_CLOSE_WRITE) != 0) {
        result.events.push_back({Kind::written, path});
    }
}

void FolderWatch::removeBelow(const std::filesystem::path& folder) {
    std::erase_if(folders, [&](const auto& watched) {
        const auto& [number, path] = watched;
        const bool isRemoved =
            path.native() == folder.native() || isBelow(path.native(), folder.native());
        if (isRemoved)
            ::inotify_rm_watch(notifications.get(), number);
        return isRemoved;
    });
}

} // namespace tidemark
