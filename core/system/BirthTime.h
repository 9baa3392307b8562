#pragma once

#include <cstdint>
#include <optional>

namespace tidemark {

/// When the file or folder open as `descriptor` was made, in nanoseconds since 1970; absent where
/// the file system keeps no such date. Together with device and inode it identifies a file over
/// time: file systems soon reuse the inode of a removed file.
std::optional<std::int64_t> birthTime(int descriptor);

} // namespace tidemark
