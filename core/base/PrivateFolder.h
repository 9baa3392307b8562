#pragma once

#include <filesystem>

namespace tidemark {

/// True for a folder, not a link to one, that belongs to this user and that nobody else may enter.
bool isPrivateFolder(const std::filesystem::path& folder);

/// Makes a folder of mode 0700 in a folder that exists, or takes one that is private already.
/// Throws `Error` for one that is not: what lies in it may be another user's trap.
void requirePrivateFolder(const std::filesystem::path& folder);

} // namespace tidemark
