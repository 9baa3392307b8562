#pragma once

#include "core/base/KeyFile.h"
#include "core/capture/ApplicationFormat.h"

/// An application as a desktop entry: a file whose name ends in ".desktop", in a folder
/// "applications" (XDG Desktop Entry 1.5). The version is that of the package which the
/// file belongs to, or of the snap that the entry names.
///
/// What depends on the session (`OnlyShowIn`, `TryExec`) or the language is ignored, so that the
/// inventory is the same for every session.
namespace tidemark::DesktopEntry {

inline constexpr std::string_view group = "Desktop Entry";

/// True for a file in a root of desktop entries whose name ends in ".desktop", in lower case.
bool recognises(const FolderEntry& entry, RootFamily family);

/// `noApplication` for another type than "Application" and for entries that are hidden or not
/// displayed, which are mostly parts of other programs; `unreadable` for a file that can't be
/// parsed or has no name.
ApplicationReading read(const FolderEntry& entry, const ApplicationSurroundings& where);

/// Makes the application from the bytes of the file, without its identifier and version.
ApplicationReading described(std::string bytes, const FolderEntry& entry);

/// The value of a key of the entry as a boolean: true for "true", and for "1" as in old entries.
bool isTrue(const KeyFile& file, std::string_view key);

/// The identifier of an entry: its path below the root, "/" as "-", without ".desktop".
std::string identifier(const std::filesystem::path& path, const std::filesystem::path& root);

} // namespace tidemark::DesktopEntry
