#pragma once

#include <filesystem>

namespace tidemark {

/// The absolute path with links, "." and ".." resolved and no slash at the end. Of a path that
/// does not exist, or can't be looked at, the part that can be resolved is.
std::filesystem::path canonicalPath(const std::filesystem::path& path);

} // namespace tidemark
