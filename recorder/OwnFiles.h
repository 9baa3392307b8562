#pragma once

#include <filesystem>

/// Protects the program's own files from commands that write files.
namespace tidemark::ownFiles {

/// True for a path in the folder of this user's history or settings, whether it exists or not.
/// Follows links. Blocks.
bool contain(const std::filesystem::path& file);

/// Throws `Error` if `contain(file)` is true. Blocks.
void refuse(const std::filesystem::path& file);

} // namespace tidemark::ownFiles
