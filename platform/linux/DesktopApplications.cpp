#include "platform/linux/DesktopApplications.h"

#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/capture/CommandText.h"
#include "core/capture/DesktopEntry.h"
#include "core/system/UserFolders.h"
#include "platform/linux/PathList.h"

#include <QStandardPaths>
#include <algorithm>
#include <array>

namespace tidemark::desktopApplications {

namespace {

namespace fs = std::filesystem;
using Application = ApplicationSource::Application;

/// These run another program, which the command does not always name by a path.
constexpr auto runners =
    std::to_array<std::string_view>({"env", "sh", "bash", "flatpak", "snap", "python3"});

/// The path of the program that the entry starts; that of the entry itself when the program is a
/// runner or is not found.
std::string pathOf(const KeyFile& entry, const fs::path& file) {
    const auto command = entry.value(DesktopEntry::group, "Exec");
    const auto program = command ? CommandText::firstWord(KeyFile::unescaped(*command),
                                                          CommandText::Quoting::desktopEntry)
                                 : std::nullopt;
    if (!program || std::ranges::find(runners, fs::path(*program).filename()) != runners.end())
        return textFromBytes(file.native());
    const auto found = QStandardPaths::findExecutable(QString::fromStdString(*program));
    return found.isEmpty() ? textFromBytes(file.native()) : found.toStdString();
}

std::optional<Application> read(const std::string& identifier, const fs::path& file,
                                std::string bytes) {
    FolderEntry described;
    described.path = file;
    const auto application = DesktopEntry::described(bytes, described);
    const auto entry = KeyFile::parse(std::move(bytes), KeyFile::Continuation::none);
    if (!application || !entry || DesktopEntry::isTrue(*entry, "Terminal"))
        return std::nullopt;
    return Application{identifier, application->application.name, pathOf(*entry, file)};
}

/// A desktop entry's file and its bytes.
using EntryFile = std::pair<fs::path, std::string>;

bool isFolder(const fs::path& path) {
    std::error_code unknown;
    return fs::is_directory(path, unknown);
}

/// The entry with that identifier that can be read. Each "-" of an identifier may stand for the "/"
/// after the name of a folder.
std::optional<EntryFile> entryIn(const fs::path& folder, const std::string& identifier) {
    try {
        const auto file = folder / (identifier + ".desktop");
        return EntryFile(file, readFile(file, KeyFile::maximumSize));
    } catch (const FileError&) {
        // There is none, or it can't be read.
    }
    for (auto dash = identifier.find('-'); dash != std::string::npos;
         dash = identifier.find('-', dash + 1)) {
        const auto name = identifier.substr(0, dash);
        if (name.empty() || name == "." || name == ".." || !isFolder(folder / name))
            continue;
        if (auto entry = entryIn(folder / name, identifier.substr(dash + 1)))
            return entry;
    }
    return std::nullopt;
}

} // namespace

std::vector<fs::path> folders() {
    std::vector<fs::path> folders{UserFolders::data() / "applications",
                                  UserFolders::data() / "flatpak/exports/share/applications"};
    for (const auto& data : pathList("XDG_DATA_DIRS", "/usr/local/share:/usr/share"))
        folders.push_back(data / "applications");
    folders.emplace_back("/var/lib/flatpak/exports/share/applications");
    folders.emplace_back("/var/lib/snapd/desktop/applications");
    return folders;
}

std::optional<Application> find(const std::vector<std::string>& identifiers,
                                const std::vector<fs::path>& folders) {
    for (const auto& identifier : identifiers) {
        if (identifier.empty() || identifier.contains('/') || identifier.contains('\0'))
            continue;
        for (const auto& folder : folders)
            if (auto entry = entryIn(folder, identifier))
                return read(identifier, entry->first, std::move(entry->second));
    }
    return std::nullopt;
}

} // namespace tidemark::desktopApplications
