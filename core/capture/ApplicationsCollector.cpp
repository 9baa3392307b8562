#include "core/capture/ApplicationsCollector.h"

#include "core/base/Text.h"
#include "core/capture/RootReading.h"

#include <algorithm>

namespace tidemark::ApplicationsCollector {

namespace {

using Kind = FolderEntry::Kind;

bool isStorable(const Application& application) {
    return std::max({application.bundleID.size(), application.name.size(),
                     application.version.size(), application.build.size()})
           <= longestText;
}

class Walk {
public:
    Walk(Clock& clock, const std::stop_token& stop, std::span<const ApplicationFormat> formats,
         const MachineFiles& machine)
        : clock(clock), stop(stop), formats(formats), machine(machine) {}

    void visit(const ApplicationRoot& given) {
        const auto root = machine.canonical(given.path);
        const std::string path = textFromBytes(root.native());
        RootReading reading(ReadingBudget(secondsPerRoot, clock, stop));
        visitRoot(root, reading);
        if (!reading.finish(path, result))
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
    void visitRoot(const std::filesystem::path& root, RootReading& reading) {
        if (!reading.mayContinue())
            return;
        const auto listing =
            FolderListing::open(machine, root, FolderListing::Hidden::skipped, reading.budget());
        if (listing)
            visitEntries(*listing, 0, reading);
        else if (listing.error() != FolderListing::Failure::missing)
            reading.fail();
    }

    void visitFolder(const FolderEntry& folder, int depth, RootReading& reading) {
        if (!reading.mayContinue())
            return;
        const auto listing =
            FolderListing::open(folder, FolderListing::Hidden::skipped, reading.budget());
        if (listing)
            visitEntries(*listing, depth, reading);
        else
            reading.fail();
    }

    void visitEntries(const FolderListing& listing, int depth, RootReading& reading) {
        for (const auto& name : listing.names()) {
            if (!reading.mayContinue())
                return;
            visitEntry(listing.entry(name), depth, reading);
        }
    }

    void visitEntry(const FolderEntry& entry, int depth, RootReading& reading) {
        if (entry.kind == Kind::link)
            return exclude(entry, symbolicLinks, reading);
        // In a folder that may be listed but not searched, the kinds of the entries are unknown.
        if (entry.kind == Kind::unknown)
            return reading.fail();
        const auto format = std::ranges::find_if(
            formats, [&](const ApplicationFormat& each) { return each.recognises(entry); });
        if (format != formats.end())
            return add(entry, *format, reading);
        if (entry.kind != Kind::folder)
            return;
        if (depth >= deepestListing)
            return exclude(entry, beyondDepth, reading);
        visitFolder(entry, depth + 1, reading);
    }

    void add(const FolderEntry& entry, const ApplicationFormat& format, RootReading& reading) {
        auto application = format.read(entry, reading.budget());
        if (application && isStorable(*application))
            result.items.emplace_back(*std::move(application));
        else
            exclude(entry, unreadable, reading);
    }

    static void exclude(const FolderEntry& entry, int& counter, RootReading& reading) {
        reading.exclude(entry.pathText());
        ++counter;
    }

    Clock& clock;
    const std::stop_token& stop;
    std::span<const ApplicationFormat> formats;
    const MachineFiles& machine;
    Inventory<Application> result;
    int beyondDepth = 0;
    int symbolicLinks = 0;
    int unreadable = 0;
};

} // namespace

Inventory<Application> collect(const std::vector<ApplicationRoot>& roots, Clock& clock,
                               const std::stop_token& stop,
                               std::span<const ApplicationFormat> among,
                               const MachineFiles& machine) {
    Walk walk(clock, stop, among, machine);
    for (const auto& root : roots)
        walk.visit(root);
    return walk.finish();
}

} // namespace tidemark::ApplicationsCollector
