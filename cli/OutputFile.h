#pragma once

#include <filesystem>

namespace tidemark {

/// The file to write: the one that a link leads to. Throws `FileError` for anything but a regular
/// file, since a replacement would take the place of a device or a pipe, where no file can be made,
/// and `Error` for a file of the program itself.
std::filesystem::path writableFile(const std::filesystem::path& given);

} // namespace tidemark
