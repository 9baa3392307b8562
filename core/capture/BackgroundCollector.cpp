#include "core/capture/BackgroundCollector.h"

#include "core/base/Text.h"

#include <algorithm>

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
    Collection(const Applications& found, std::span<const BackgroundFormat> among)
        : apps(found), formats(among) {}

    void visit(const BackgroundRoot& root) {
        const auto canonical = canonicalPath(root.path);
        const std::string path = textFromBytes(canonical.native());
        const auto listing = FolderListing::open(canonical, FolderListing::Hidden::skipped);
        if (!listing && listing.error() != FolderListing::Failure::missing) {
            result.issues.push_back("Background items: cannot completely read " + path
                                    + ". Changes in this location are paused.");
            return;
        }
        if (listing)
            for (const auto& name : listing->names())
                visitEntry(listing->entry(name), root.kind);
        result.roots.insert(path);
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
    void visitEntry(const FolderEntry& entry, BackgroundItem::Kind kind) {
        const auto format = std::ranges::find_if(
            formats, [&](const BackgroundFormat& each) { return each.recognises(entry); });
        if (format == formats.end())
            return;
        if (entry.kind == FolderEntry::Kind::link)
            return exclude(entry, symbolicLinks);
        auto item = format->read(entry);
        if (!item)
            return exclude(
                entry, item.error() == BackgroundDefinition::Failure::empty ? empty : unreadable);
        item->kind = kind;
        associate(*item, apps);
        result.items.emplace_back(*std::move(item));
    }

    void exclude(const FolderEntry& entry, int& counter) {
        result.excludedPaths.insert(entry.pathText());
        ++counter;
    }

    const Applications& apps;
    std::span<const BackgroundFormat> formats;
    Inventory<BackgroundItem> result;
    int unreadable = 0;
    int empty = 0;
    int symbolicLinks = 0;
};

} // namespace

Inventory<BackgroundItem> collect(const std::vector<BackgroundRoot>& roots,
                                  const Applications& apps,
                                  std::span<const BackgroundFormat> among) {
    Collection collection(apps, among);
    for (const auto& root : roots)
        collection.visit(root);
    return collection.finish();
}

} // namespace tidemark::BackgroundCollector
