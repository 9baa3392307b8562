#include "core/capture/ApplicationsCollector.h"

#include "core/base/Text.h"

#include <algorithm>

namespace tidemark::ApplicationsCollector {

namespace {

using Kind = FolderEntry::Kind;

class Walk {
public:
    Walk(Clock& time, const std::stop_token& token, std::span<const ApplicationFormat> among)
        : clock(time), stop(token), formats(among) {}

    void visit(const std::filesystem::path& given) {
        const auto root = canonicalPath(given);
        const std::string path = textFromBytes(root.native());
        complete = true;
        deadline = clock.now() + secondsPerRoot;
        visitRoot(root);
        if (complete)
            result.roots.insert(path);
        else
            result.issues.push_back("Applications: incomplete access or scan limit at " + path
                                    + ". Changes in this location are paused.");
    }

    Inventory<Application> finish() {
        if (unreadable > 0)
            result.issues.push_back("Applications: metadata could not be read for "
                                    + std::to_string(unreadable)
                                    + " app or folder locations. These locations are excluded "
                                      "from comparisons.");
        if (beyondDepth > 0)
            result.notes.push_back("Applications: " + std::to_string(beyondDepth)
                                   + " nested folders were beyond the four-level search limit. "
                                     "This is a scan boundary, not a permission error; apps "
                                     "deeper inside those folders are not tracked.");
        if (symbolicLinks > 0)
            result.notes.push_back("Applications: " + std::to_string(symbolicLinks)
                                   + " symbolic links were skipped. Link targets are not "
                                     "followed outside the selected folder.");
        std::ranges::stable_sort(result.items, {},
                                 [](const auto& item) -> const auto& { return item->path; });
        return std::move(result);
    }

private:
    /// Whether time is left; if not, the root is incomplete.
    bool mayGoOn() {
        if (!stop.stop_requested() && clock.now() <= deadline)
            return true;
        complete = false;
        return false;
    }

    void visitRoot(const std::filesystem::path& root) {
        if (!mayGoOn())
            return;
        const auto listing = FolderListing::open(root, FolderListing::Hidden::skipped);
        if (listing)
            visitEntries(*listing, 0);
        else if (listing.error() != FolderListing::Failure::missing)
            complete = false;
    }

    void visitFolder(const FolderEntry& folder, int depth) {
        if (!mayGoOn())
            return;
        const auto listing = FolderListing::open(folder, FolderListing::Hidden::skipped);
        if (listing)
            visitEntries(*listing, depth);
        else
            complete = false;
    }

    void visitEntries(const FolderListing& listing, int depth) {
        for (const auto& name : listing.names()) {
            if (!mayGoOn())
                return;
            visitEntry(listing.entry(name), depth);
        }
    }

    void visitEntry(const FolderEntry& entry, int depth) {
        if (entry.kind == Kind::link)
            return exclude(entry, symbolicLinks);
        // A folder may be listed but not searched: what lies in it is then not known to be gone.
        if (entry.kind == Kind::unknown) {
            complete = false;
            return;
        }
        const auto format = std::ranges::find_if(
            formats, [&](const ApplicationFormat& each) { return each.recognises(entry); });
        if (format != formats.end())
            return add(entry, *format);
        if (entry.kind != Kind::folder)
            return;
        if (depth >= deepestListing)
            return exclude(entry, beyondDepth);
        visitFolder(entry, depth + 1);
    }

    void add(const FolderEntry& entry, const ApplicationFormat& format) {
        if (auto application = format.read(entry))
            result.items.emplace_back(*std::move(application));
        else
            exclude(entry, unreadable);
    }

    void exclude(const FolderEntry& entry, int& counter) {
        result.excludedPaths.insert(entry.pathText());
        ++counter;
    }

    Clock& clock;
    const std::stop_token& stop;
    std::span<const ApplicationFormat> formats;
    Inventory<Application> result;
    Date deadline;
    bool complete = true;
    int beyondDepth = 0;
    int symbolicLinks = 0;
    int unreadable = 0;
};

} // namespace

Inventory<Application> collect(const std::vector<std::filesystem::path>& roots, Clock& clock,
                               const std::stop_token& stop,
                               std::span<const ApplicationFormat> among) {
    Walk walk(clock, stop, among);
    for (const auto& root : roots)
        walk.visit(root);
    return walk.finish();
}

} // namespace tidemark::ApplicationsCollector
