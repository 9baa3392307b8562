#include "recorder/Erasure.h"

#include "core/base/FileDescriptor.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/base/Uuid.h"
#include "core/system/FolderNames.h"
#include "recorder/OwnDocuments.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <functional>
#include <ranges>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string_view>;

constexpr std::string_view lockFile = "recorder.lock";
constexpr std::size_t digestDigits = 64;

/// Takes the name of a file and returns, in words for the user, what the file holds; absent for a
/// file that is not the program's own. Each kind of folder has such a function.
using Content = std::function<std::optional<std::string>(std::string_view name)>;

bool isUuid(std::string_view text) {
    return Uuid::parse(text).has_value();
}

/// Whether `name` is that of an unfinished replacement of `document` (`FileReplacement`).
bool isReplacementOf(std::string_view document, std::string_view name) {
    const std::string prefix = "." + std::string(document) + ".new-";
    return name.starts_with(prefix) && isUuid(name.substr(prefix.size()));
}

template <class Documents>
std::optional<std::string> contentOf(const Documents& documents, std::string_view name) {
    for (const auto& document : documents)
        if (name == document.name || isReplacementOf(document.name, name))
            return std::string(document.content);
    return std::nullopt;
}

std::optional<std::string> dataContent(std::string_view name) {
    if (name == lockFile)
        return "the lock of the recorder";
    return contentOf(ownDocuments::ofData, name);
}

std::optional<std::string> settingsContent(std::string_view name) {
    if (name.starts_with(ownDocuments::damagedSettings))
        return "settings that were damaged";
    return contentOf(ownDocuments::ofSettings, name);
}

/// "DIGEST.data" or "DIGEST.text".
bool isPayload(std::string_view name) {
    return name.size() == digestDigits + 5 && (name.ends_with(".data") || name.ends_with(".text"))
           && std::ranges::all_of(name.substr(0, digestDigits),
                                  [](unsigned char c) { return std::isxdigit(c) != 0; });
}

std::optional<std::string> payloadContent(std::string_view name) {
    const auto end = name.rfind(".new-");
    const bool isReplacement =
        end != name.npos && name.starts_with('.') && isReplacementOf(name.substr(1, end - 1), name);
    return isPayload(isReplacement ? name.substr(1, end - 1) : name)
               ? std::optional<std::string>("contents of clips")
               : std::nullopt;
}

std::optional<std::string> backupContent(std::string_view name) {
    constexpr std::array<std::string_view, 4> copies{"journal.json", "system-activity.json",
                                                     "storage-measurements.json", "complete.json"};
    const bool isCopy = std::ranges::any_of(
        copies, [&](std::string_view copy) { return name == copy || isReplacementOf(copy, name); });
    return isCopy ? std::optional<std::string>("a copy of the history of an earlier release")
                  : std::nullopt;
}

std::optional<std::string> ofBoth(std::string_view name) {
    auto content = dataContent(name);
    return content ? content : settingsContent(name);
}

std::optional<std::string> nothing(std::string_view) {
    return std::nullopt;
}

/// A complete copy of the history, or one that was being made.
bool isBackup(std::string_view folder) {
    constexpr std::string_view unfinished = ".pre-v2-";
    return folder == "pre-v2"
           || (folder.starts_with(unfinished) && isUuid(folder.substr(unfinished.size())));
}

/// Describes the file of this name, and no other.
Content only(const std::string& file, const std::string& content) {
    return [file, content](std::string_view name) {
        return name == file ? std::optional(content) : std::nullopt;
    };
}

Error notRemovable(const fs::path& path, const std::string& reason) {
    return Error("Nothing was removed: " + textFromBytes(path.native()) + " " + reason + ".");
}

/// Invalid when there is no such folder.
FileDescriptor opened(const fs::path& folder) {
    FileDescriptor descriptor(
        ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (descriptor || errno == ENOENT)
        return descriptor;
    const int reason = errno;
    std::error_code unknown;
    if (fs::is_symlink(fs::symlink_status(folder, unknown)))
        throw notRemovable(folder, "is a link, and links are not followed; remove it and what it "
                                   "leads to yourself");
    throw notRemovable(folder, "could not be opened: " + std::string(std::strerror(reason)));
}

std::vector<std::string> namesIn(const fs::path& folder, const FileDescriptor& descriptor) {
    FolderNames entries{FileDescriptor(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, 0))};
    std::vector<std::string> names;
    while (const dirent* entry = entries.next())
        if (const std::string name = entry->d_name; name != "." && name != "..")
            names.push_back(name);
    if (entries.error() != 0)
        throw notRemovable(folder,
                           "could not be read: " + std::string(std::strerror(entries.error())));
    std::ranges::sort(names);
    return names;
}

} // namespace

class ErasureSearch {
public:
    explicit ErasureSearch(Erasure& result) : result(result) {}

    /// Who has files in a folder.
    enum class Folder { own, ofSeveralRecorders, ofOthers };

    /// Searches the folder without its subfolders. Those in `subfolders` don't count as foreign
    /// files.
    void search(const fs::path& folder, const Content& content, Folder kind = Folder::own,
                const Names& subfolders = {}) {
        const auto descriptor = opened(folder);
        if (!descriptor)
            return;
        bool hasOwn = false;
        for (const auto& name : namesIn(folder, descriptor)) {
            if (std::ranges::find(subfolders, name) != subfolders.end())
                continue;
            const auto own = content(name);
            if (own)
                add(folder, name, *own, descriptor);
            else if (kind == Folder::own)
                ++result.foreign;
            hasOwn = hasOwn || own;
        }
        if (hasOwn && ::faccessat(descriptor.get(), ".", W_OK | X_OK, AT_EACCESS) != 0)
            throw notRemovable(folder,
                               "could not be changed: " + std::string(std::strerror(errno)));
        if (kind != Folder::ofOthers)
            result.folders.push_back(folder);
    }

    /// The names of folders in `folder` that `isOwn` accepts.
    static std::vector<std::string> foldersIn(const fs::path& folder,
                                              bool (*isOwn)(std::string_view name)) {
        const auto descriptor = opened(folder);
        auto names = descriptor ? namesIn(folder, descriptor) : std::vector<std::string>();
        std::erase_if(names, [&](const auto& name) { return !isOwn(name); });
        return names;
    }

private:
    void add(const fs::path& folder, const std::string& name, const std::string& content,
             const FileDescriptor& descriptor) {
        struct stat status{};
        if (::fstatat(descriptor.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            throw notRemovable(folder / name,
                               "could not be found: " + std::string(std::strerror(errno)));
        if (S_ISLNK(status.st_mode))
            throw notRemovable(folder / name, "is a link, and links are not followed; remove it "
                                              "and what it leads to yourself");
        if (S_ISDIR(status.st_mode))
            throw notRemovable(folder / name, "is a folder, where a file was expected");
        result.files.push_back({folder, name});
        partOf(folder, name, content).files += 1;
        partOf(folder, name, content).bytes += S_ISREG(status.st_mode) ? status.st_size : 0;
    }

    /// Files of one folder with the same content are one part.
    Erasure::Part& partOf(const fs::path& folder, const std::string& name,
                          const std::string& content) {
        const auto known = std::ranges::find_if(result.found, [&](const Erasure::Part& part) {
            return part.content == content
                   && (part.path == folder || part.path.parent_path() == folder);
        });
        if (known == result.found.end())
            return result.found.emplace_back(folder / name, content);
        if (known->path != folder / name)
            known->path = folder;
        return *known;
    }

    Erasure& result;
};

Erasure Erasure::of(const RecorderPlaces& places, const std::optional<fs::path>& loginItem) {
    using Folder = ErasureSearch::Folder;
    Erasure result;
    ErasureSearch search(result);
    const fs::path& data = places.files.directory;
    const fs::path settings = places.settings.parent_path();
    const fs::path backups = data / "Backups";
    // Fails for a link, before anything behind it is searched.
    opened(data);
    const auto copies = ErasureSearch::foldersIn(backups, isBackup);
    for (const auto& copy : copies)
        search.search(backups / copy, backupContent);
    search.search(backups, nothing, Folder::own, Names(copies.begin(), copies.end()));
    search.search(data / "memory-payloads", payloadContent);
    for (const auto& socket : places.sockets)
        search.search(
            socket.parent_path(), only(socket.filename().native(), "the socket of the recorder"),
            socket.parent_path().parent_path() == data ? Folder::own : Folder::ofSeveralRecorders);
    if (const auto& legacy = places.files.legacyJournal)
        search.search(legacy->parent_path(),
                      only(legacy->filename().native(), "the history of an earlier release"),
                      Folder::ofOthers);
    if (loginItem)
        search.search(loginItem->parent_path(),
                      only(loginItem->filename().native(), "the start at login"), Folder::ofOthers);
    // On some systems, settings and data are in the same folder.
    if (settings != data)
        search.search(settings, settingsContent);
    search.search(data, settings == data ? ofBoth : dataContent, Folder::own,
                  {"Backups", "memory-payloads", "control"});
    return result;
}

void Erasure::carryOut() const {
    const auto remove = [](const File& file) {
        const auto folder = opened(file.folder);
        if (folder && ::unlinkat(folder.get(), file.name.c_str(), 0) != 0 && errno != ENOENT)
            throw FileError::ofSystem(file.folder / file.name, "could not be removed", errno);
    };
    // The lock goes last, so that no recorder begins before everything is removed.
    const auto isLock = [](const File& file) { return file.name == lockFile; };
    for (const auto& file : files)
        if (!isLock(file))
            remove(file);
    std::ranges::for_each(files | std::views::filter(isLock), remove);
    for (const auto& folder : folders)
        if (::rmdir(folder.c_str()) == 0)
            flushFolder(folder.parent_path());
        else if (errno == ENOTEMPTY || errno == EEXIST)
            flushFolder(folder);
}

} // namespace tidemark
