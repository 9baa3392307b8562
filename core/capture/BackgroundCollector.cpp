#include "core/capture/BackgroundCollector.h"

#include "core/base/Text.h"
#include "core/capture/PackageAssociation.h"
#include "core/capture/RootReading.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

namespace tidemark::BackgroundCollector {

namespace {

using Applications = std::vector<Shared<Application>>;

/// Applications by a text that several may share, their path or their identifier. An application
/// that two roots report counts twice.
class ApplicationsByText {
public:
    void add(std::string_view text, const Application& application) {
        auto& [first, count] = found[text];
        first = &application;
        ++count;
    }

    /// The only application whose text equals the part of `text` before one of its separators, or
    /// `text` itself if `mayBeWhole` is set; null when there is none or more than one.
    const Application* onlyPrefix(std::string_view text, char separator, bool mayBeWhole) const {
        Match all;
        for (auto end = text.find(separator); end != std::string_view::npos;
             end = text.find(separator, end + 1))
            all = sum(all, text.substr(0, end));
        if (mayBeWhole)
            all = sum(all, text);
        return all.count == 1 ? all.application : nullptr;
    }

private:
    struct Match {
        const Application* application = nullptr;
        int count = 0;
    };

    Match sum(const Match& before, std::string_view text) const {
        const auto more = found.find(text);
        if (more == found.end())
            return before;
        return {more->second.application, before.count + more->second.count};
    }

    std::unordered_map<std::string_view, Match> found;
};

/// Finds the application that a background item belongs to.
class Associations {
public:
    Associations(const Applications& apps, PackageIndex::Reading* packages)
        : byPackage(apps, packages) {
        for (const auto& app : apps) {
            byPath.add(app->path, *app);
            byBundleID.add(app->bundleID, *app);
        }
    }

    void associate(BackgroundItem& item) const {
        std::string_view reason = BackgroundItem::insideBundle;
        const auto* app = item.program ? byPath.onlyPrefix(*item.program, '/', false) : nullptr;
        if (!app) {
            reason = byIdentifier;
            app = byBundleID.onlyPrefix(item.identifier, '.', true);
        }
        if (!app) {
            reason = PackageAssociation::reason;
            app = byPackage.find(item.path);
        }
        if (!app)
            return;
        item.associatedAppID = app->bundleID;
        item.association = reason;
    }

private:
    ApplicationsByText byPath;
    ApplicationsByText byBundleID;
    PackageAssociation byPackage;
};

class Collection {
public:
    Collection(const Applications& apps, Clock& clock, const std::stop_token& stop,
               std::span<const BackgroundFormat> formats, const MachineFiles& machine,
               PackageIndex::Reading* packages)
        : associations(apps, packages), clock(clock), stop(stop), formats(formats),
          machine(machine), merged(machine) {}

    void visit(const std::vector<BackgroundRoot>& given) {
        const auto roots = canonicalRoots(given);
        const auto holdsTables = [](const BackgroundRoot& root) {
            return root.family == RootFamily::cronTables;
        };
        if (std::ranges::any_of(roots, holdsTables) && CronDefinition::hasPersonalTables(machine))
            result.notes.emplace_back("Background items: the crontabs of users are not observed. "
                                      "Only the program crontab may read them.");
        std::set<RootFamily> read;
        for (const auto& root : roots) {
            const auto family = std::ranges::find(families, root.family, &BackgroundFamily::family);
            if (family == std::ranges::end(families))
                visitRoot(root);
            else if (read.insert(root.family).second)
                visitFamily(*family, roots);
        }
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
    /// The roots by their canonical paths, each folder once even if it was given by several paths.
    std::vector<BackgroundRoot> canonicalRoots(const std::vector<BackgroundRoot>& given) const {
        std::vector<BackgroundRoot> roots;
        for (BackgroundRoot root : given) {
            root.path = machine.canonical(root.path);
            if (std::ranges::find(roots, root.path, &BackgroundRoot::path) == roots.end())
                roots.push_back(std::move(root));
        }
        return roots;
    }

    void visitRoot(const BackgroundRoot& root) {
        const std::string path = textFromBytes(root.path.native());
        RootReading reading(ReadingBudget(secondsPerRoot, clock, stop));
        visitFolder(root, reading);
        if (!reading.finish(path, result))
            result.issues.push_back("Background items: cannot completely read " + path
                                    + ". Changes in this location are paused.");
    }

    void visitFamily(const BackgroundFamily& family, const std::vector<BackgroundRoot>& roots) {
        std::vector<BackgroundItem::Kind> kinds;
        std::vector<std::filesystem::path> folders;
        std::vector<RootReading> readings;
        for (const auto& root : roots) {
            if (root.family != family.family)
                continue;
            kinds.push_back(root.kind);
            folders.push_back(root.path);
            readings.emplace_back(ReadingBudget(secondsPerRoot, clock, stop));
        }
        auto found = family.read(machine, folders, readings, merged);
        for (auto& definition : found.definitions)
            addDefinition(definition, kinds[definition.folder], readings[definition.folder]);
        for (const auto& [folder, path] : found.links)
            exclude(textFromBytes(path.native()), symbolicLinks, readings[folder]);
        if (found.unreadable) {
            for (auto& reading : readings)
                reading.fail();
            result.issues.push_back("Background items: cannot completely read "
                                    + textFromBytes(found.unreadable->native())
                                    + ". Changes in this location and in the folders that it can "
                                      "override are paused.");
        }
        for (std::size_t i = 0; i < folders.size(); ++i)
            readings[i].finish(textFromBytes(folders[i].native()), result);
    }

    void addDefinition(FamilyDefinitions::Definition& definition, BackgroundItem::Kind kind,
                       RootReading& reading) {
        std::string path = textFromBytes(definition.path.native());
        if (!definition.content)
            return exclude(std::move(path), unreadable, reading);
        auto item = storable(BackgroundDefinition::item(*definition.content, path));
        if (!item)
            return exclude(std::move(path), unreadable, reading);
        add(*std::move(item), kind);
    }

    void add(BackgroundItem item, BackgroundItem::Kind kind) {
        item.kind = kind;
        associations.associate(item);
        result.items.emplace_back(std::move(item));
    }

    void visitFolder(const BackgroundRoot& root, RootReading& reading) {
        if (!reading.mayContinue())
            return;
        const auto listing = FolderListing::open(machine, root.path, FolderListing::Hidden::skipped,
                                                 reading.budget());
        if (!listing && listing.error() != FolderListing::Failure::missing)
            return reading.fail();
        if (!listing)
            return;
        for (const auto& name : listing->names()) {
            if (!reading.mayContinue())
                return;
            visitEntry(listing->entry(name), root, reading);
        }
    }

    void visitEntry(const FolderEntry& entry, const BackgroundRoot& root, RootReading& reading) {
        const auto format = std::ranges::find_if(formats, [&](const BackgroundFormat& each) {
            return each.family == root.family && each.recognises(entry);
        });
        if (format == formats.end())
            return;
        if (entry.kind == FolderEntry::Kind::link)
            return exclude(entry.pathText(), symbolicLinks, reading);
        auto item = definition(entry, *format);
        if (item)
            add(*std::move(item), root.kind);
        else if (item.error() != BackgroundDefinition::Failure::noJob)
            exclude(entry.pathText(),
                    item.error() == BackgroundDefinition::Failure::empty ? empty : unreadable,
                    reading);
    }

    /// Reads a definition. A file with several names is read once: reading a large one a thousand
    /// times would take minutes.
    BackgroundDefinition::Result definition(const FolderEntry& entry,
                                            const BackgroundFormat& format) {
        if (!format.isReadByContent || !entry.sharedVersion)
            return storable(format.read(entry, merged));
        const auto key = std::pair(&format, *entry.sharedVersion);
        auto known = shared.find(key);
        if (known == shared.end())
            known = shared.emplace(key, storable(format.read(entry, merged))).first;
        BackgroundDefinition::Result item = known->second;
        if (item)
            item->path = entry.pathText();
        return item;
    }

    static BackgroundDefinition::Result storable(BackgroundDefinition::Result item) {
        if (item && !hasStorableTexts(*item))
            return std::unexpected(BackgroundDefinition::Failure::unreadable);
        return item;
    }

    static void exclude(std::string path, int& counter, RootReading& reading) {
        reading.exclude(std::move(path));
        ++counter;
    }

    const Associations associations;
    Clock& clock;
    const std::stop_token& stop;
    std::span<const BackgroundFormat> formats;
    const MachineFiles& machine;
    const MergedFolders merged;
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
                                  std::span<const BackgroundFormat> knownFormats,
                                  const MachineFiles& machine, PackageIndex::Reading* packages) {
    Collection collection(apps, clock, stop, knownFormats, machine, packages);
    collection.visit(roots);
    return collection.finish();
}

} // namespace tidemark::BackgroundCollector
