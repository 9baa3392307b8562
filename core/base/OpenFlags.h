#pragma once

/// Flags of open(2) that each system calls by another name.
namespace tidemark::openFlags {

/// Opens a folder to look up names in it, without the permission to list it.
extern const int toSearchFolder;

} // namespace tidemark::openFlags
