#include "core/capture/ApplicationBundle.h"

#include "core/base/Files.h"
#include "core/base/PropertyList.h"
#include "core/base/Text.h"

namespace tidemark::ApplicationBundle {

namespace {

using Kind = FolderEntry::Kind;
using PropertyList::Dictionary;

constexpr const char* metadataName = "Info.plist";

bool isBundle(const FolderEntry& entry) {
    return entry.kind == Kind::folder && asciiLowercased(entry.extension()) == "app";
}

FileError notReadable(const FolderEntry& entry) {
    return {entry.path, "holds no readable metadata"};
}

/// Describes the entry `name` in the folder `parent`; `holder` keeps that folder open.
FolderEntry below(const FolderEntry& parent, const char* name, FileDescriptor& holder) {
    holder = parent.openFolder();
    if (!holder)
        throw notReadable(parent);
    return FolderEntry::describe(holder.get(), parent.path, name);
}

std::string wrappedMetadata(const FolderEntry& wrapper, const ReadingBudget& budget) {
    const auto listing = FolderListing::open(wrapper, FolderListing::Hidden::listed, budget);
    if (!listing)
        throw notReadable(wrapper);
    std::optional<FolderEntry> inner;
    for (const auto& name : listing->names()) {
        if (budget.isSpent())
            throw notReadable(wrapper);
        const auto entry = listing->entry(name);
        if (!isBundle(entry))
            continue;
        if (inner)
            throw notReadable(wrapper);
        inner = entry;
    }
    if (!inner)
        throw notReadable(wrapper);
    FileDescriptor holder;
    return below(*inner, metadataName, holder).read(PropertyList::maximumSize);
}

/// Throws `FileError`.
std::string metadata(const FolderEntry& bundle, const ReadingBudget& budget) {
    FileDescriptor inBundle;
    const auto contents = below(bundle, "Contents", inBundle);
    if (contents.kind == Kind::link || contents.kind == Kind::unknown)
        throw notReadable(contents);
    if (contents.kind == Kind::folder) {
        FileDescriptor inContents;
        const auto list = below(contents, metadataName, inContents);
        if (list.kind != Kind::missing)
            return list.read(PropertyList::maximumSize);
    }
    return wrappedMetadata(FolderEntry::describe(inBundle.get(), bundle.path, "Wrapper"), budget);
}

std::string textOr(const std::string* text, std::string_view fallback) {
    return text ? *text : std::string(fallback);
}

} // namespace

bool recognises(const FolderEntry& entry, RootFamily family) {
    return family != RootFamily::desktopEntries && family != RootFamily::flatpaks
           && isBundle(entry);
}

ApplicationReading read(const FolderEntry& bundle, const ApplicationSurroundings& where) {
    try {
        if (auto application = described(metadata(bundle, where.budget), bundle))
            return FoundApplication{*std::move(application)};
    } catch (const FileError&) {
        // Reported like metadata without an identifier.
    }
    return std::unexpected(ApplicationFailure::unreadable);
}

std::optional<Application> described(std::string_view metadata, const FolderEntry& bundle) {
    const auto parsed = PropertyList::parse(metadata);
    const auto* list = parsed ? parsed->as<Dictionary>() : nullptr;
    if (!list)
        return std::nullopt;
    const auto text = [&](std::string_view key) {
        return PropertyList::find<std::string>(*list, key);
    };
    const auto* identifier = text("CFBundleIdentifier");
    if (!identifier)
        return std::nullopt;
    const auto* name = text("CFBundleDisplayName");
    if (!name)
        name = text("CFBundleName");
    return Application{
        .bundleID = *identifier,
        .name = textOr(name, textFromBytes(bundle.path.stem().native())),
        .version = textOr(text("CFBundleShortVersionString"), unknownVersion),
        .build = textOr(text("CFBundleVersion"), ""),
        .path = bundle.pathText(),
        .modified = bundle.modified,
    };
}

} // namespace tidemark::ApplicationBundle
