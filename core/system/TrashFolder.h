#pragma once

#include "core/system/UserFolders.h"

/// Recognises Trash folders, those of other users included. One source file per system.
///
/// On Linux, as desktops agreed at freedesktop.org: "Trash/files" in the user's data
/// folder, and ".Trash-1000/files" or ".Trash/1000/files" at the top of each other volume, where
/// 1000 is the number of any user. Only "files" has the deleted files. The folders beside it have
/// records about them and are never empty. On a Mac: "~/.Trash", and "/Volumes/Name/.Trashes/501".
/// On both: any folder named ".Trash", so that a history of either system reads the same on both.
namespace tidemark::TrashFolder {

/// Whether the folder at the absolute path `path` is one of them. Decided by the path and the
/// place of the user's data folder, not by what is mounted now: a comparison of old observations
/// must not change when a volume is removed.
bool is(std::string_view path,
        const UserFolders::Environment& environment = UserFolders::processEnvironment);

/// Whether `folder` is a Trash of a Mac and `name` the file ".DS_Store", which the file manager of
/// a Mac keeps there. It is not counted, or an empty Trash would never appear empty.
bool isFileManagersOwn(std::string_view folder, std::string_view name);

} // namespace tidemark::TrashFolder
