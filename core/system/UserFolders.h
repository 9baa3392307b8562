#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The standard folders of this user: those of the XDG Base Directory standard, and those in
/// ~/Library on a Mac. A variable that is empty or not an absolute path counts as not set.
namespace tidemark::UserFolders {

/// Returns the value of a variable; absent when it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;
std::optional<std::string> processEnvironment(const char* name);

/// `XDG_DATA_HOME`, else ~/.local/share (~/Library/Application Support). It may not exist yet.
std::filesystem::path data(const Environment& environment = processEnvironment);

/// `XDG_CONFIG_HOME`, else ~/.config (~/Library/Application Support). It may not exist yet.
std::filesystem::path configuration(const Environment& environment = processEnvironment);

/// A folder with a localised name, from user-dirs.dirs in the configuration folder; `kind` is the
/// name there, such as "DOWNLOAD". Absent when the file has no such folder, or has the home folder,
/// which means the same.
std::optional<std::filesystem::path> localized(std::string_view kind,
                                               const Environment& environment = processEnvironment);

/// A folder for sockets that nobody else may enter: `XDG_RUNTIME_DIR`, or the folder of the user in
/// `sessions`, where a login manager creates it; the first of them that exists and is private. So
/// two processes of one user find the same folder even if only one of them has the variable. Absent
/// outside of a session. A folder for temporary files would not do: another user could create the
/// name in it first.
std::optional<std::filesystem::path> runtime(const Environment& environment = processEnvironment,
                                             const std::filesystem::path& sessions = "/run/user");

} // namespace tidemark::UserFolders
