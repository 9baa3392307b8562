#pragma once

#include <cstdint>
#include <optional>

namespace tidemark {

/// When the file or folder open as `descriptor` was made, in nanoseconds since 1970; absent where
/// the file system keeps no such date. With device and inode it is the identity of a file over
/// time: the inode of a removed file is given to another one soon.
std::optional<std::int64_t> birthTime(int descriptor);

} // namespace tidemark
