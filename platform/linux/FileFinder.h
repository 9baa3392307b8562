#pragma once

#include "app/ports/FileIndex.h"
#include "platform/linux/DownloadOrigins.h"
#include "platform/linux/FolderWalk.h"
#include "platform/linux/FolderWatch.h"
#include "platform/linux/KnownFiles.h"
#include "platform/linux/NewestFiles.h"

#include <functional>
#include <optional>
#include <stop_token>
#include <unordered_map>

namespace tidemark {

/// Finds the files of a `FileIndex` on Linux: those in the folders, by walking through them and
/// then watching them, and those in the desktop's list of recently used files. Used by one thread,
/// which it blocks.
///
/// While a folder is missing or can't be watched, or after events were lost, it walks through all
/// folders again from time to time and reports what has changed since the last walk.
class FileFinder {
public:
    /// In seconds.
    struct Delays {
        /// From a change until the changes up to then are reported.
        double batch = 3;
        /// Between two walks while a folder is missing or can't be watched.
        double rewalk = 600;
        /// The shortest time between two walks, however many events were lost.
        double rest = 30;
    };
    struct Setup {
        FileIndex::Scope scope;
        /// The folders of `scope`, or the folders for documents where it names none. Canonical
        /// paths.
        std::vector<std::filesystem::path> folders;
        std::filesystem::path recentlyUsed;
        /// The folder whose files may have their origin in the metadata of the desktop.
        std::filesystem::path downloads;
        DownloadOrigins origins;
        Delays delays{};
        std::size_t mostWatches = FolderWatch::standardBudget();
    };
    using Report = std::function<void(FileIndex::Matches)>;

    explicit FileFinder(Setup setup);

    /// Reports files until the stop is requested. `report` is called on this thread: first with all
    /// matches, then with changes.
    void run(const Report& report, const std::stop_token& stop);

private:
    using File = NewestFiles::File;
    using Uses = std::unordered_map<std::string, Date>;

    void findAll(NewestFiles& found, const std::stop_token& stop);
    void findChanged(NewestFiles& found, const std::stop_token& stop);
    void enter(const std::vector<folderWalk::Start>& starts, Date since, NewestFiles& found,
               const std::stop_token& stop);
    void handle(const FolderWatch::Event& event, NewestFiles& found, const std::stop_token& stop);
    void readList(Date since, NewestFiles& found);
    void watchFolder(const std::filesystem::path& folder);
    void add(const std::filesystem::path& path, std::optional<FileStatus> status, Date since,
             NewestFiles& found);
    /// How deep a path lies below the outermost of the folders that contain it; 0 for one of the
    /// folders itself, absent outside of all.
    std::optional<int> depthOf(const std::filesystem::path& path) const;
    FileIndex::Matches matches(const std::vector<File>& files, const std::stop_token& stop);
    IndexedFileObservation observation(const File& file, int& questions);
    /// When the next walk is due, in monotonic seconds; absent while every change is noticed.
    std::optional<double> nextWalk() const;

    Setup uses;
    FolderWatch watch;
    KnownFiles known;
    /// When the files in the list were used.
    Uses used;
    /// When files arrived from other folders: their date of creation is older.
    std::unordered_map<std::string, Date> arrivals;
    /// Whether a folder could not be watched, for example because a limit was reached.
    bool isOverBudget = false;
    bool hasMissingFolders = false;
    bool hasLostEvents = false;
    double lastWalk = 0;
    Date lastWalkDate;
};

} // namespace tidemark
