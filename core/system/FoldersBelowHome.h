#pragma once

/// Where a system keeps the files of programs, relative to the home folder of the user.
namespace tidemark::FoldersBelowHome {

extern const char* const data;
extern const char* const configuration;

} // namespace tidemark::FoldersBelowHome
