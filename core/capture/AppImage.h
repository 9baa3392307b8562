#pragma once

#include "core/capture/ApplicationFormat.h"

/// An application as a single file that can be run, with its file system inside (AppImage,
/// types 1 and 2): its name ends in ".appimage" in any case, and it is an ELF file with the
/// bytes "AI" and 1 or 2 at offset 8. Only this beginning is read.
namespace tidemark::AppImage {

/// True for a file in a root of `RootFamily::ownApplications` or `any`.
bool recognises(const FolderEntry& entry, RootFamily family);

/// Name and identifier are the name of the file without extension; the version is the part of it
/// that `versionIn` finds; the build is the size in bytes.
ApplicationReading read(const FolderEntry& file, const ApplicationSurroundings& where);

/// The part of a name between "-", "_" and " " that is a version: it begins with digits, a dot and
/// a digit, optionally after a "v", such as "1.3.2" in "Harbor-1.3.2-x86_64". Empty when there is
/// none.
std::string_view versionIn(std::string_view name);

} // namespace tidemark::AppImage
