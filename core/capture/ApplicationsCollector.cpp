#include "core/capture/ApplicationsCollector.h"

#include "core/base/Text.h"
#include "core/capture/ApplicationPrecedence.h"
#include "core/capture/RootReading.h"

#include <algorithm>
#include <iterator>

namespace tidemark::ApplicationsCollector {

namespace {

using Kind = FolderEntry::Kind;

/// An application and the root in which it was found, so that both are sorted together.
struct Found {
    Shared<Application> application;
    RootFamily family;
    std::size_t root;
};

/// The root that is being read.
struct Root {
    std::filesystem::path path;
    RootFamily family;
    std::size_t number;
    RootReading reading;
};

class Walk {
public:
    Walk(Clock& clock, const std::stop_token& stop, const Search& search)
        : clock(clock), stop(stop), search(search) {}

    void visit(const ApplicationRoot& given) {
        const auto canonical = search.machine.canonical(given.path);
        if (!visited.insert(canonical).second)
            return;
        Root root{canonical, given.family, visited.size(),
                  RootReading(ReadingBudget(secondsPerRoot, clock, stop))};
        visitRoot(root);
        const std::string path = textFromBytes(canonical.native());
        if (!root.reading.finish(path, result))
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
        describeVersions();
        takeFound();
        return std::move(result);
    }

private:
    void describeVersions() {
        const auto sentence = [](int count, std::string_view reason) {
            const bool isOne = count == 1;
            return "Applications: "
                   + (isOne ? "the version of 1 application"
                            : "the versions of " + std::to_string(count) + " applications")
                   + " could not be read, because " + std::string(reason)
                   + (isOne ? ". It is" : ". They are") + " excluded from comparisons.";
        };
        if (withoutVersion > 0)
            result.issues.push_back(
                sentence(withoutVersion, "the records of installations can't be read or are being "
                                         "changed"));
        if (ofUnknownForm > 0)
            result.notes.push_back(
                sentence(ofUnknownForm, "the form of the package database is not supported"));
    }

    void takeFound() {
        std::ranges::stable_sort(
            found, {}, [](const Found& each) -> const auto& { return each.application->path; });
        std::vector<ApplicationPrecedence::Candidate> candidates;
        candidates.reserve(found.size());
        for (const auto& each : found)
            candidates.push_back({each.application->bundleID, each.family, each.root});
        const auto overridden = ApplicationPrecedence::overridden(candidates);
        for (std::size_t i = 0; i < found.size(); ++i) {
            if (overridden[i])
                result.excludedPaths.insert(found[i].application->path);
            else
                result.items.push_back(std::move(found[i].application));
        }
    }

    void visitRoot(Root& root) {
        if (!root.reading.mayContinue())
            return;
        const auto listing = FolderListing::open(
            search.machine, root.path, FolderListing::Hidden::skipped, root.reading.budget());
        if (listing)
            visitEntries(*listing, 0, root);
        else if (listing.error() != FolderListing::Failure::missing)
            root.reading.fail();
    }

    void visitFolder(const FolderEntry& folder, int depth, Root& root) {
        const auto listing =
            FolderListing::open(folder, FolderListing::Hidden::skipped, root.reading.budget());
        if (listing)
            visitEntries(*listing, depth, root);
        else
            root.reading.fail();
    }

    void visitEntries(const FolderListing& listing, int depth, Root& root) {
        for (const auto& name : listing.names()) {
            if (!root.reading.mayContinue())
                return;
            visitEntry(listing.entry(name), depth, root);
        }
    }

    void visitEntry(const FolderEntry& entry, int depth, Root& root) {
        if (entry.kind == Kind::link)
            return exclude(entry, symbolicLinks, root);
        // In a folder with read but without search permission, the kinds of the entries are
        // unknown.
        if (entry.kind == Kind::unknown)
            return root.reading.fail();
        const auto* format = std::ranges::find_if(formats, [&](const ApplicationFormat& each) {
            return each.recognises(entry, root.family);
        });
        if (format != std::end(formats))
            return read(entry, *format, root);
        if (entry.kind != Kind::folder)
            return;
        if (depth >= deepestListing)
            return exclude(entry, beyondDepth, root);
        visitFolder(entry, depth + 1, root);
    }

    void read(const FolderEntry& entry, const ApplicationFormat& format, Root& root) {
        if (search.foldersOnly && !format.isFolder)
            return;
        auto reading =
            format.read(entry, {search.machine, root.path, root.reading.budget(), search.packages});
        if (reading && hasStorableTexts(reading->application))
            return add(*std::move(reading), root);
        if (reading || reading.error() == ApplicationFailure::unreadable)
            exclude(entry, unreadable, root);
    }

    void add(FoundApplication each, Root& root) {
        if (each.missesVersion) {
            root.reading.exclude(each.application.path);
            ++(*each.missesVersion == PackageFailure::unsupported ? ofUnknownForm : withoutVersion);
        }
        found.push_back(
            {Shared<Application>(std::move(each.application)), root.family, root.number});
    }

    static void exclude(const FolderEntry& entry, int& counter, Root& root) {
        root.reading.exclude(entry.pathText());
        ++counter;
    }

    Clock& clock;
    const std::stop_token& stop;
    const Search& search;
    std::set<std::filesystem::path> visited;
    std::vector<Found> found;
    Inventory<Application> result;
    int beyondDepth = 0;
    int symbolicLinks = 0;
    int unreadable = 0;
    int withoutVersion = 0;
    int ofUnknownForm = 0;
};

} // namespace

Inventory<Application> collect(const std::vector<ApplicationRoot>& roots, Clock& clock,
                               const std::stop_token& stop, const Search& search) {
    Walk walk(clock, stop, search);
    for (const auto& root : roots)
        walk.visit(root);
    return walk.finish();
}

} // namespace tidemark::ApplicationsCollector
