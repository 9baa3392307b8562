#pragma once

#include <filesystem>

namespace tidemark {

/// The file to write for a path from the command line: the target of a link, else the path itself.
/// Throws `FileError` when no file can be created there or it exists and is not a regular file, and
/// `Error` for a file in the program's own folders.
std::filesystem::path writableFile(const std::filesystem::path& given);

} // namespace tidemark
