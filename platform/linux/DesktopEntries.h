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

/// The applications that have a desktop entry (XDG Desktop Entry 1.5), read again when one of their
/// folders has changed. Reads files; for one thread.
class DesktopEntries {
public:
    /// The folder with precedence first.
    explicit DesktopEntries(
        std::vector<std::filesystem::path> folders = desktopApplications::folders())
        : folders(std::move(folders)) {}

    /// By the identifier of the entry: its path below the folder, "/" as "-", without ".desktop".
    std::optional<ClipApplication> withId(std::string_view id);
    /// By the class of its windows: `StartupWMClass`, or an entry with that name.
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
    std::vector<std::filesystem::file_time_type> state;
    /// Names by identifier.
    std::map<std::string, std::string, std::less<>> names;
    /// Identifiers by lower-case identifier or class, and by program; empty for ambiguous programs.
    std::map<std::string, std::string> idsByClass;
    std::map<std::string, std::string> idsByProgram;
};

} // namespace tidemark
