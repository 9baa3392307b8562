#pragma once

#include <filesystem>
#include <vector>

namespace tidemark {

/// The absolute paths in the value of a variable such as `XDG_DATA_DIRS`, which has ":" between
/// them; those in `otherwise` when it is empty or not set.
std::vector<std::filesystem::path> pathList(const char* variable, const char* otherwise);

/// The folders for data of all users, where packages put the files of their services. Always begins
/// with the two standard ones, because message buses look there whatever the session says.
std::vector<std::filesystem::path> systemDataFolders();

} // namespace tidemark
