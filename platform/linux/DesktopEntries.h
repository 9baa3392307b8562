#pragma once

#include "core/memory/CopiedItem.h"
#include "platform/linux/DesktopApplications.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The applications that have a desktop entry (XDG Desktop Entry 1.5), read again when an entry was
/// added, removed or replaced in one of their folders. An entry that an editor overwrites in place
/// is not read again. Reads files; for one thread.
class DesktopEntries {
public:
    /// `folders` in the order of precedence: of entries with the same identifier, the first is
    /// used.
    explicit DesktopEntries(
        std::vector<std::filesystem::path> folders = desktopApplications::folders())
        : folders(std::move(folders)) {}

    /// By the identifier of the entry: its path below the folder, "/" as "-", without ".desktop".
    std::optional<ClipApplication> withId(std::string_view id);
    /// By the class of its windows: the entry with that `StartupWMClass`, or else the one with that
    /// identifier. Upper and lower case are not distinguished.
    std::optional<ClipApplication> withWindowClass(std::string_view windowClass);
    /// By the name of the program that it starts; absent when several entries start it.
    std::optional<ClipApplication> withProgram(std::string_view program);

private:
    void refresh();
    void readFolder(const std::filesystem::path& folder);
    void readEntry(const std::filesystem::path& file, const std::string& id);
    std::optional<ClipApplication> application(const std::map<std::string, std::string>& index,
                                               std::string_view key) const;

    const std::vector<std::filesystem::path> folders;
    /// The dates of the folders that were read, and of those in them; absent for unreadable ones.
    std::map<std::filesystem::path, std::optional<std::filesystem::file_time_type>> dates;
    /// Names by identifier; empty for hidden entries.
    std::map<std::string, std::string, std::less<>> names;
    /// Identifiers by lower-case class, by lower-case identifier, and by program. The last has an
    /// empty identifier for a program that several entries start.
    std::map<std::string, std::string> idsByClass;
    std::map<std::string, std::string> idsByName;
    std::map<std::string, std::string> idsByProgram;
};

} // namespace tidemark
