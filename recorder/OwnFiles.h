#pragma once

#include <filesystem>

/// The files that only the program itself may write.
namespace tidemark::ownFiles {

/// True for whatever lies, or would lie, in the folder of the history or in that of the settings of
/// this user. Links are followed. Blocks.
bool contain(const std::filesystem::path& file);

/// Throws `Error` for such a file: what a command writes would take the place of a document.
void refuse(const std::filesystem::path& file);

} // namespace tidemark::ownFiles
