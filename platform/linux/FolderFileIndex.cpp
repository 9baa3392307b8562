#include "platform/linux/FolderFileIndex.h"

#include "app/base/MainThreadCalls.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/StartThread.h"
#include "core/base/Text.h"
#include "core/system/SystemFacts.h"
#include "core/system/ThreadPriority.h"
#include "core/system/UserFolders.h"
#include "platform/linux/RecentlyUsedList.h"

#include <array>
#include <stop_token>

namespace tidemark {

namespace {

namespace fs = std::filesystem;

struct DocumentFolder {
    const char* kind;
    const char* usualName;
};
constexpr const char* downloadKind = "DOWNLOAD";
constexpr auto documentFolders = std::to_array<DocumentFolder>({
    {"DOCUMENTS", "Documents"},
    {"DESKTOP", "Desktop"},
    {downloadKind, "Downloads"},
    {"MUSIC", "Music"},
    {"PICTURES", "Pictures"},
    {"VIDEOS", "Videos"},
});

std::vector<fs::path> canonical(const std::vector<fs::path>& folders) {
    std::vector<fs::path> paths;
    for (const auto& folder : folders)
        paths.push_back(canonicalPath(folder));
    return paths;
}

FileFinder::Setup finderSetup(FileIndex::Scope scope, const FolderFileIndex::Places& places,
                              DownloadOrigins origins, FileFinder::Delays delays) {
    auto folders = canonical(scope.folders.value_or(places.documents));
    return {.scope = std::move(scope),
            .folders = std::move(folders),
            .recentlyUsed =
                canonicalPath(places.recentlyUsed.parent_path()) / places.recentlyUsed.filename(),
            .downloads = canonicalPath(places.downloads),
            .origins = std::move(origins),
            .delays = delays};
}

} // namespace

/// One start of the index. Shared with its thread, which may outlive the index.
class FolderFileIndex::Run : public std::enable_shared_from_this<Run> {
public:
    explicit Run(Found found) : found(std::move(found)) {}

    void begin(Scope scope, const Setup& uses, std::shared_ptr<std::atomic<bool>> hasMetadata) {
        startThread([self = shared_from_this(), post = calls->post(), scope = std::move(scope),
                     uses, hasMetadata = std::move(hasMetadata)] {
            lowerThreadPriority();
            DownloadOrigins origins(DownloadOrigins::findGio(),
                                    [hasMetadata] { return hasMetadata->load(); });
            try {
                self->find(finderSetup(scope, uses.places(), std::move(origins), uses.delays),
                           post);
            } catch (const std::exception& error) {
                qWarning("Recent files are not followed any more. %s", error.what());
                self->deliver({.files = {}, .hasStopped = true}, post);
            }
        }).detach();
    }
    void end() {
        source.request_stop();
        calls.reset();
    }

private:
    void find(FileFinder::Setup setup, const MainThreadCalls::Post& post) {
        const auto report = [&](Matches matches) { deliver(std::move(matches), post); };
        FileFinder(std::move(setup)).run(report, source.get_token());
    }
    void deliver(Matches matches, const MainThreadCalls::Post& post) {
        post([self = shared_from_this(), matches = std::move(matches)]() mutable {
            self->found(std::move(matches));
        });
    }

    const Found found;
    std::stop_source source;
    /// Absent after the end. Main thread only.
    std::optional<MainThreadCalls> calls = std::optional<MainThreadCalls>(std::in_place);
};

FolderFileIndex::Places FolderFileIndex::Places::current() {
    const auto home = SystemFacts::homeDirectory();
    Places places{
        .documents = {}, .downloads = {}, .recentlyUsed = recentlyUsedList::standardPath()};
    for (const auto& [kind, usualName] : documentFolders) {
        auto folder = UserFolders::localized(kind).value_or(home / usualName);
        if (kind == downloadKind)
            places.downloads = folder;
        // Leaves out the home folder itself and the folders above it.
        if (folder != home && !isBelow(home.native(), folder.native()) && folder != "/")
            places.documents.push_back(std::move(folder));
    }
    return places;
}

bool FolderFileIndex::start(Scope scope, Found found) {
    stop();
    followMetadata();
    run = std::make_shared<Run>(std::move(found));
    try {
        run->begin(std::move(scope), uses, hasMetadata);
        return true;
    } catch (const Error& error) {
        qWarning("Recent files can't be followed. %s", error.what());
        run.reset();
        return false;
    }
}

void FolderFileIndex::followMetadata() {
    if (!metadata)
        metadata.emplace(uses.bus(), QStringLiteral("org.gtk.vfs.Daemon"),
                         [this] { hasMetadata->store(metadata->isThere()); });
}

void FolderFileIndex::stop() {
    if (const auto running = std::exchange(run, {}))
        running->end();
}

} // namespace tidemark
