#pragma once

/// The folders for the files of programs, relative to the user's home folder.
namespace tidemark::FoldersBelowHome {

extern const char* const data;
extern const char* const configuration;

} // namespace tidemark::FoldersBelowHome
