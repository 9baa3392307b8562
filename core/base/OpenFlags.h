#pragma once

/// Flags of open(2) that have a different name on each system.
namespace tidemark::openFlags {

/// Opens a folder to look up names in it, without the permission to list it.
extern const int toSearchFolder;

} // namespace tidemark::openFlags
