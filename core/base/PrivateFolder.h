#pragma once

#include <filesystem>

namespace tidemark {

/// True for a folder (not a link to one) that this user owns and nobody else may enter.
bool isPrivateFolder(const std::filesystem::path& folder);

/// Creates a folder of mode 0700 in an existing folder, or accepts one that is private already.
/// Throws `Error` when it can't be created, and for an existing folder that is not private: another
/// user may have put files there.
void requirePrivateFolder(const std::filesystem::path& folder);

} // namespace tidemark
