#include "platform/linux/FolderWalk.h"

#include "core/system/FolderNames.h"

#include <algorithm>
#include <array>
#include <deque>

#include <fcntl.h>

namespace tidemark::folderWalk {

namespace {

constexpr auto unfinished =
    std::to_array<std::string_view>({".part", ".crdownload", ".download", ".tmp", "~", ".swp"});
/// Entries between two checks whether to stop.
constexpr int stepSize = 50;

bool mayBeFolderOrFile(const dirent& entry) {
    return entry.d_type == DT_DIR || entry.d_type == DT_REG || entry.d_type == DT_UNKNOWN;
}

class Walk {
public:
    Walk(const Visitor& visitor, const std::stop_token& stop) : visitor(visitor), stop(stop) {}

    bool run(const std::vector<Start>& starts) {
        waiting.assign(starts.begin(), starts.end());
        for (; !waiting.empty(); waiting.pop_front())
            if (!enter(Start(waiting.front())))
                return false;
        return true;
    }

private:
    bool enter(const Start& start) {
        FileDescriptor folder(
            ::open(start.folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder)
            return !stop.stop_requested();
        visitor.enter(start.folder);
        FolderNames names(std::move(folder));
        int step = 0;
        while (const dirent* entry = names.next()) {
            if (step++ % stepSize == 0 && stop.stop_requested())
                return false;
            if (mayBeFolderOrFile(*entry) && isVisited(entry->d_name))
                visitEntry(start, names.descriptor(), entry->d_name);
        }
        return true;
    }
    void visitEntry(const Start& start, int folder, const char* name) {
        const auto status = FileStatus::read(folder, name);
        if (!status)
            return;
        if (status->isRegularFile())
            visitor.file(start.folder / name, *status);
        else if (status->isFolder() && !status->isMountRoot && start.depth < mostDepth)
            waiting.push_back({start.folder / name, start.depth + 1});
    }

    const Visitor& visitor;
    const std::stop_token& stop;
    std::deque<Start> waiting;
};

} // namespace

bool isVisited(std::string_view name) {
    return !name.starts_with('.') && name != "node_modules"
           && std::ranges::none_of(unfinished,
                                   [&](std::string_view end) { return name.ends_with(end); });
}

bool visit(const std::vector<Start>& starts, const Visitor& visitor, const std::stop_token& stop) {
    return Walk(visitor, stop).run(starts);
}

} // namespace tidemark::folderWalk
