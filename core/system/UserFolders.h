#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Where programs of this user keep their files: the XDG Base Directory standard, and the folders
/// of the Library on a Mac. A variable that is empty or no absolute path counts as not set.
namespace tidemark::UserFolders {

/// The value of a variable, absent when it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;
std::optional<std::string> processEnvironment(const char* name);

/// `XDG_DATA_HOME`, else ~/.local/share (~/Library/Application Support). It may not exist yet.
std::filesystem::path data(const Environment& environment = processEnvironment);

/// `XDG_CONFIG_HOME`, else ~/.config (~/Library/Application Support). It may not exist yet.
std::filesystem::path configuration(const Environment& environment = processEnvironment);

/// A folder that goes by a name in the language of the user, such as "DOWNLOAD": by user-dirs.dirs
/// in the folder of configurations. Absent where that names none, or the home folder, which there
/// stands for none.
std::optional<std::filesystem::path> localized(std::string_view kind,
                                               const Environment& environment = processEnvironment);

/// A folder for sockets that nobody else may enter: the first that exists and is private of
/// `XDG_RUNTIME_DIR` and the user's own in `sessions`, where a login manager makes it. Two
/// processes of one user find the same one, even when only one of them was given the variable.
/// Absent outside of a session; a folder for temporary files is no substitute, as any other user
/// could take the name in it first.
std::optional<std::filesystem::path> runtime(const Environment& environment = processEnvironment,
                                             const std::filesystem::path& sessions = "/run/user");

} // namespace tidemark::UserFolders
