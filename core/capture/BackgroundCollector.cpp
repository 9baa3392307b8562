#include "core/capture/BackgroundCollector.h"

#include "core/base/Text.h"
#include "core/capture/RootReading.h"

#include <algorithm>
#include <map>
#include <utility>

namespace tidemark::BackgroundCollector {

namespace {

using Applications = std::vector<Shared<Application>>;

/// The one application that `belongs`; null when there is none or a choice. A bundle that two
/// roots report counts twice.
template <class Belongs>
const Application* onlyOne(const Applications& apps, Belongs belongs) {
    const Application* only = nullptr;
    for (const auto& app : apps) {
        if (!belongs(*app))
            continue;
        if (only)
            return nullptr;
        only = &*app;
    }
    return only;
}

bool matches(std::string_view label, std::string_view bundleID) {
    return label.starts_with(bundleID)
           && (label.size() == bundleID.size() || label[bundleID.size()] == '.');
}

void associate(BackgroundItem& item, const Applications& apps) {
    std::string_view reason = BackgroundItem::insideBundle;
    const auto* app = onlyOne(apps, [&](const Application& candidate) {
        return item.program && isBelow(*item.program, candidate.path);
    });
    if (!app) {
        reason = byIdentifier;
        app = onlyOne(apps, [&](const Application& candidate) {
            return matches(item.identifier, candidate.bundleID);
        });
    }
    if (!app)
        return;
    item.associatedAppID = app->bundleID;
    item.association = reason;
}

class Collection {
public:
    Collection(const Applications& found, Clock& time, const std::stop_token& token,
               std::span<const BackgroundFormat> among, const MachineFiles& files)
        : apps(found), clock(time), stop(token), formats(among), machine(files) {}

    void visit(const BackgroundRoot& root) {
        const auto canonical = machine.canonical(root.path);
        if (!visited.insert(canonical).second)
            return;
        const std::string path = textFromBytes(canonical.native());
        RootReading reading(ReadingBudget(secondsPerRoot, clock, stop));
        visitFolder(canonical, root.kind, reading);
        if (!reading.finish(path, result))
            result.issues.push_back("Background items: cannot completely read " + path
                                    + ". Changes in this location are paused.");
    }

    Inventory<BackgroundItem> finish() {
        if (unreadable > 0)
            result.issues.push_back("Background items: " + std::to_string(unreadable)
                                    + " definitions could not be read or did not contain valid "
                                      "metadata. They are excluded from comparisons.");
        if (empty > 0)
            result.notes.push_back("Background items: " + std::to_string(empty)
                                   + " empty property lists were skipped because they contain no "
                                     "service definition. No additional permission is needed for "
                                     "these files.");
        if (symbolicLinks > 0)
            result.notes.push_back("Background items: " + std::to_string(symbolicLinks)
                                   + " symbolic links were skipped; their targets are not "
                                     "followed.");
        return std::move(result);
    }

private:
    void visitFolder(const std::filesystem::path& folder, BackgroundItem::Kind kind,
                     RootReading& reading) {
        if (!reading.mayGoOn())
            return;
        const auto listing =
            FolderListing::open(machine, folder, FolderListing::Hidden::skipped, reading.budget());
        if (!listing && listing.error() != FolderListing::Failure::missing)
            return reading.fail();
        if (!listing)
            return;
        for (const auto& name : listing->names()) {
            if (!reading.mayGoOn())
                return;
            visitEntry(listing->entry(name), kind, reading);
        }
    }

    void visitEntry(const FolderEntry& entry, BackgroundItem::Kind kind, RootReading& reading) {
        const auto format = std::ranges::find_if(
            formats, [&](const BackgroundFormat& each) { return each.recognises(entry); });
        if (format == formats.end())
            return;
        if (entry.kind == FolderEntry::Kind::link)
            return exclude(entry, symbolicLinks, reading);
        auto item = definition(entry, *format);
        if (!item)
            return exclude(
                entry, item.error() == BackgroundDefinition::Failure::empty ? empty : unreadable,
                reading);
        item->kind = kind;
        associate(*item, apps);
        result.items.emplace_back(*std::move(item));
    }

    /// Reads a definition, once for all the names of one file: a large one with a thousand names
    /// would take minutes.
    BackgroundDefinition::Result definition(const FolderEntry& entry,
                                            const BackgroundFormat& format) {
        if (!format.isReadByContent || !entry.sharedVersion)
            return storable(format.read(entry));
        const auto key = std::pair(&format, *entry.sharedVersion);
        auto known = shared.find(key);
        if (known == shared.end())
            known = shared.emplace(key, storable(format.read(entry))).first;
        BackgroundDefinition::Result item = known->second;
        if (item)
            item->path = entry.pathText();
        return item;
    }

    static BackgroundDefinition::Result storable(BackgroundDefinition::Result item) {
        const auto isLong = [](const std::string& text) { return text.size() > longestText; };
        if (item && (isLong(item->identifier) || (item->program && isLong(*item->program))))
            return std::unexpected(BackgroundDefinition::Failure::unreadable);
        return item;
    }

    static void exclude(const FolderEntry& entry, int& counter, RootReading& reading) {
        reading.exclude(entry.pathText());
        ++counter;
    }

    const Applications& apps;
    Clock& clock;
    const std::stop_token& stop;
    std::span<const BackgroundFormat> formats;
    const MachineFiles& machine;
    std::set<std::filesystem::path> visited;
    std::map<std::pair<const BackgroundFormat*, FileVersion>, BackgroundDefinition::Result> shared;
    Inventory<BackgroundItem> result;
    int unreadable = 0;
    int empty = 0;
    int symbolicLinks = 0;
};

} // namespace

Inventory<BackgroundItem> collect(const std::vector<BackgroundRoot>& roots,
                                  const Applications& apps, Clock& clock,
                                  const std::stop_token& stop,
                                  std::span<const BackgroundFormat> among,
                                  const MachineFiles& machine) {
    Collection collection(apps, clock, stop, among, machine);
    for (const auto& root : roots)
        collection.visit(root);
    return collection.finish();
}

} // namespace tidemark::BackgroundCollector
