#include "core/capture/FlatpakApplication.h"

#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/capture/DesktopEntry.h"
#include "core/capture/FlatpakDeploy.h"

namespace tidemark::FlatpakApplication {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestDeploy = std::size_t{1} << 20;
constexpr std::size_t shortCommit = 12;

/// An open folder and its path.
struct OpenFolder {
    FileDescriptor descriptor;
    fs::path path;

    /// The entry is read by the descriptor of this folder, which must still be open then.
    FolderEntry entry(const std::string& name) const& {
        return FolderEntry::describe(descriptor.get(), path, name);
    }
    FolderEntry entry(const std::string& name) const&& = delete;

    /// The folder at the path `relative`, whose folders are opened one after the other and through
    /// no link. If one of them can't be opened, nothing in the last can be read.
    OpenFolder below(const fs::path& relative) const {
        OpenFolder inner;
        const OpenFolder* outer = this;
        for (const auto& name : relative) {
            const auto next = outer->entry(name.native());
            inner = {next.openFolder(), next.path};
            outer = &inner;
        }
        return inner;
    }
};

/// The text of a link. Throws `FileError` unless it is a relative path of `names` names without
/// "..".
fs::path relativeLink(const FolderEntry& link, std::ptrdiff_t names) {
    const fs::path target = link.linkText();
    if (target.is_absolute() || std::distance(target.begin(), target.end()) != names)
        throw FileError(link.path, "is not a link into this folder");
    for (const auto& name : target)
        if (name == "..")
            throw FileError(link.path, "is not a link into this folder");
    return target;
}

/// The name in the desktop entry that comes with the application; empty without one.
std::string nameOfEntry(const OpenFolder& installed, const std::string& identifier) try {
    const auto folder = installed.below("export/share/applications");
    const auto entry = folder.entry(identifier + ".desktop");
    const auto found = DesktopEntry::described(entry.read(KeyFile::maximumSize), entry);
    return found ? found->application.name : "";
} catch (const FileError&) {
    return "";
}

/// Throws `FileError`.
FoundApplication readCurrent(const OpenFolder& folder, const FolderEntry& entry) {
    const auto branch = folder.below(relativeLink(folder.entry("current"), 2));
    const fs::path commit = relativeLink(branch.entry("active"), 1);
    const auto installed = branch.below(commit);
    const auto deploy = installed.entry("deploy");
    const auto record = FlatpakDeploy::parse(deploy.read(largestDeploy));
    if (!record)
        throw FileError(deploy.path, "is not readable");
    const std::string identifier = textFromBytes(entry.name());
    const std::string name = record->name ? *record->name : nameOfEntry(installed, entry.name());
    return {{.bundleID = identifier,
             .name = name.empty() ? identifier : name,
             .version = record->version.value_or(std::string(unknownVersion)),
             .build = textFromBytes(commit.native().substr(0, shortCommit)),
             .path = entry.pathText(),
             .modified = entry.modified}};
}

} // namespace

bool recognises(const FolderEntry& entry, RootFamily family) {
    return family == RootFamily::flatpaks && entry.kind == FolderEntry::Kind::folder;
}

ApplicationReading read(const FolderEntry& entry, const ApplicationSurroundings&) try {
    const OpenFolder folder{entry.openFolder(), entry.path};
    if (folder.entry("current").kind == FolderEntry::Kind::missing)
        return std::unexpected(ApplicationFailure::noApplication);
    return readCurrent(folder, entry);
} catch (const FileError&) {
    return std::unexpected(ApplicationFailure::unreadable);
}

} // namespace tidemark::FlatpakApplication
