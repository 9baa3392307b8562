#pragma once

#include <filesystem>

namespace tidemark {

/// The absolute path with links, "." and ".." resolved and no slash at the end. When the path does
/// not exist or can't be read, only its leading part is resolved.
std::filesystem::path canonicalPath(const std::filesystem::path& path);

} // namespace tidemark
