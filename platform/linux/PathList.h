#pragma once

#include <filesystem>
#include <vector>

namespace tidemark {

/// The absolute paths, separated by ":", in the value of an environment variable such as
/// `XDG_DATA_DIRS`; those in `otherwise` when the variable is empty or not set.
std::vector<std::filesystem::path> pathList(const char* variable, const char* otherwise);

/// The folders for data of all users, where packages put the files of their services. Always begins
/// with the two standard ones, because message buses look there whatever the session says.
std::vector<std::filesystem::path> systemDataFolders();

} // namespace tidemark
