#include "platform/linux/FileFinder.h"

#include "core/base/Clock.h"
#include "core/base/FileDescriptor.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/system/MountTable.h"
#include "platform/linux/RecentlyUsedList.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <unordered_set>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>

namespace tidemark {

namespace {

namespace fs = std::filesystem;

/// The most files whose arrival from elsewhere is remembered.
constexpr std::size_t mostArrivals = 2'000;
/// Seconds by which the dates of files may be behind the clock: the kernel updates them less often.
constexpr double dateTolerance = 1;
/// Dates of a file that are at most this many seconds apart are those of one write.
constexpr double sameMoment = 1;
/// The most runs of `gio` for one report.
constexpr int mostQuestions = 200;

double monotonicNow() {
    return Clock::system().monotonicSeconds();
}

/// Each folder once, and none that lies in another one.
std::vector<folderWalk::Start> startsOf(const std::vector<fs::path>& folders) {
    std::vector<folderWalk::Start> starts;
    for (const auto& folder : folders) {
        const bool isCovered = std::ranges::any_of(folders, [&](const fs::path& other) {
            return isBelow(folder.native(), other.native());
        });
        if (!isCovered
            && std::ranges::find(starts, folder, &folderWalk::Start::folder) == starts.end())
            starts.push_back({folder, 0});
    }
    return starts;
}

/// Whether a path lies on a network file system, whose server may not respond.
bool isOnNetwork(const std::vector<MountEntry>& mounts, const std::string& path) {
    const MountEntry* deepest = nullptr;
    for (const auto& mount : mounts)
        if ((mount.mountPoint == "/" || isBelow(path, mount.mountPoint))
            && (!deepest || deepest->mountPoint.size() <= mount.mountPoint.size()))
            deepest = &mount;
    return deepest && isNetworkFileSystem(deepest->type);
}

std::vector<MountEntry> mounts() {
    try {
        return parseMountTable(readFile("/proc/self/mountinfo"));
    } catch (const FileError&) {
        return {};
    }
}

/// Lets a thread wait for a time or for a descriptor, but no longer than until a stop is requested.
class Waiting {
public:
    explicit Waiting(const std::stop_token& stop)
        : event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), stop(stop),
          wakeUp(stop, Wake{event.get()}) {}

    /// Waits until `time`, until `other` is readable, or until the stop is requested. `other` is −1
    /// for none.
    void until(std::optional<double> time, int other) const {
        std::array<pollfd, 2> ready{pollfd{event.get(), POLLIN, 0}, pollfd{other, POLLIN, 0}};
        int left = -1;
        if (time)
            left = static_cast<int>(std::clamp((*time - monotonicNow()) * 1000 + 1, 0.0, 1e9));
        // A wait that a signal interrupts only ends early.
        ::poll(ready.data(), ready.size(), stop.stop_requested() ? 0 : left);
    }

private:
    struct Wake {
        int descriptor;
        void operator()() const { ::eventfd_write(descriptor, 1); }
    };

    const FileDescriptor event;
    const std::stop_token& stop;
    const std::stop_callback<Wake> wakeUp;
};

} // namespace

FileFinder::FileFinder(Setup setup)
    : uses(std::move(setup)), watch(uses.mostWatches), lastWalkDate(uses.scope.since) {}

void FileFinder::run(const Report& report, const std::stop_token& stop) {
    const Waiting waiting(stop);
    NewestFiles found(FileIndex::mostMatches);
    findAll(found, stop);
    auto first = matches(found.take(), stop);
    if (!stop.stop_requested())
        report(std::move(first));
    while (!stop.stop_requested()) {
        waiting.until(nextWalk(), watch.descriptor());
        // Events collect in the queue of the system meanwhile, so that a flood of them does not
        // wake this thread each time.
        waiting.until(monotonicNow() + uses.delays.batch, -1);
        if (stop.stop_requested())
            return;
        findChanged(found, stop);
        if (const auto due = nextWalk(); due && *due <= monotonicNow())
            findAll(found, stop);
        auto changes = matches(found.take(), stop);
        if (!changes.files.empty() && !stop.stop_requested())
            report(std::move(changes));
    }
}

std::optional<double> FileFinder::nextWalk() const {
    if (hasLostEvents)
        return lastWalk + uses.delays.rest;
    if (isOverBudget || hasMissingFolders)
        return lastWalk + uses.delays.rewalk;
    return std::nullopt;
}

void FileFinder::findAll(NewestFiles& found, const std::stop_token& stop) {
    const Date since = std::exchange(lastWalkDate, Date::now() + -dateTolerance);
    isOverBudget = hasLostEvents = hasMissingFolders = false;
    watchFolder(uses.recentlyUsed.parent_path());
    for (const auto& folder : uses.folders)
        watchFolder(folder);
    readList(since, found);
    enter(startsOf(uses.folders), since, found, stop);
    lastWalk = monotonicNow();
}

void FileFinder::watchFolder(const fs::path& folder) {
    std::error_code unknown;
    if (!fs::is_directory(folder, unknown))
        hasMissingFolders = true;
    else if (!watch.add(folder))
        isOverBudget = true;
}

void FileFinder::enter(const std::vector<folderWalk::Start>& starts, Date since, NewestFiles& found,
                       const std::stop_token& stop) {
    const folderWalk::Visitor visitor{
        .enter = [&](const fs::path& folder) { isOverBudget = !watch.add(folder) || isOverBudget; },
        .file = [&](const fs::path& path,
                    const FileStatus& status) { add(path, status, since, found); }};
    folderWalk::visit(starts, visitor, stop);
}

void FileFinder::findChanged(NewestFiles& found, const std::stop_token& stop) {
    const auto [events, isIncomplete] = watch.read();
    hasLostEvents = hasLostEvents || isIncomplete;
    std::unordered_set<std::string_view> seen;
    for (const auto& event : events)
        if (event.kind != FolderWatch::Event::Kind::written
            || seen.insert(event.path.native()).second)
            handle(event, found, stop);
}

void FileFinder::handle(const FolderWatch::Event& event, NewestFiles& found,
                        const std::stop_token& stop) {
    using Kind = FolderWatch::Event::Kind;
    if (event.path == uses.recentlyUsed)
        return readList(uses.scope.since, found);
    if (event.kind == Kind::gone) {
        hasMissingFolders = hasMissingFolders || depthOf(event.path) == 0
                            || event.path == uses.recentlyUsed.parent_path();
        return;
    }
    const auto depth = depthOf(event.path);
    if (!depth || !folderWalk::isVisited(event.path.filename().native()))
        return;
    if (event.kind == Kind::newFolder)
        return enter({{event.path, *depth}}, uses.scope.since, found, stop);
    const auto status = FileStatus::read(AT_FDCWD, event.path.c_str());
    if (!status || !status->isRegularFile())
        return;
    if (event.kind == Kind::movedIn)
        arrivals.erase(event.path.native());
    if (event.isFromElsewhere) {
        if (arrivals.size() >= mostArrivals)
            arrivals.erase(std::ranges::min_element(arrivals, {}, &Uses::value_type::second));
        arrivals[event.path.native()] = status->changed;
    }
    add(event.path, status, uses.scope.since, found);
}

void FileFinder::readList(Date since, NewestFiles& found) {
    const bool isEverywhere = !uses.scope.folders;
    const auto table = mounts();
    const Date now = Date::now();
    Uses before = std::exchange(used, {});
    for (auto& [path, date] : recentlyUsedList::read(uses.recentlyUsed)) {
        const bool isInFolders = depthOf(path).has_value();
        if (date > now || (!isEverywhere && !isInFolders))
            continue;
        used[path] = date;
        const auto earlier = before.find(path);
        if (date < since || (earlier != before.end() && earlier->second == date))
            continue;
        const bool isElsewhere = !isInFolders && isOnNetwork(table, path);
        const auto status = isElsewhere ? std::nullopt : FileStatus::read(AT_FDCWD, path.c_str());
        if (isElsewhere || (status && status->isRegularFile()))
            add(path, status, since, found);
    }
}

std::optional<int> FileFinder::depthOf(const fs::path& path) const {
    std::optional<int> depth;
    for (const auto& folder : uses.folders)
        if (path == folder)
            return 0;
        else if (isBelow(path.native(), folder.native())) {
            const auto below = path.native().substr(folder.native().size());
            const auto here = static_cast<int>(std::ranges::count(below, '/'));
            depth = std::max(depth.value_or(here), here);
        }
    return depth;
}

void FileFinder::add(const fs::path& path, std::optional<FileStatus> status, Date since,
                     NewestFiles& found) {
    File file{.path = path,
              .status = status,
              .used = {},
              .latest = Date::distantPast(),
              .isKnown = known.note(path.native())};
    if (status)
        file.latest = status->latest();
    if (const auto use = used.find(path.native()); use != used.end()) {
        file.used = use->second;
        file.latest = std::max(file.latest, use->second);
    }
    if (const auto arrival = arrivals.find(path.native()); arrival != arrivals.end())
        file.latest = std::max(file.latest, arrival->second);
    if (file.latest >= since)
        found.add(std::move(file));
}

FileIndex::Matches FileFinder::matches(const std::vector<File>& files,
                                       const std::stop_token& stop) {
    known.finishRound();
    FileIndex::Matches result{.files = {}, .isLive = !isOverBudget};
    int questions = 0;
    std::unordered_set<std::string_view> seen;
    for (const auto& file : files)
        if (!stop.stop_requested() && seen.insert(file.path.native()).second)
            result.files.push_back(observation(file, questions));
    return result;
}

IndexedFileObservation FileFinder::observation(const File& file, int& questions) {
    IndexedFileObservation result;
    result.path = textFromBytes(file.path.native());
    result.used = file.used;
    if (!file.status)
        return result;
    if (!file.isKnown)
        result.created = file.status->created;
    // Creating a file also sets its date of modification, so only a later date means a
    // modification.
    if (!result.created || std::abs(file.status->modified - *result.created) > sameMoment)
        result.modified = file.status->modified;
    const auto arrival = arrivals.find(file.path.native());
    result.added = arrival == arrivals.end() ? file.status->created.value_or(file.status->modified)
                                             : arrival->second;
    result.bytes = file.status->bytes;
    result.origins = DownloadOrigins::inAttributes(file.path);
    const bool isDownload = isBelow(file.path.native(), uses.downloads.native());
    if (result.origins.empty() && isDownload && questions++ < mostQuestions)
        result.origins = uses.origins.inDesktopMetadata(file.path);
    return result;
}

} // namespace tidemark
