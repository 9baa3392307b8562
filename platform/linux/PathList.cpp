#include "platform/linux/PathList.h"

#include "core/system/UserFolders.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <string>

namespace tidemark {

std::vector<std::filesystem::path> pathList(const char* variable, const char* otherwise) {
    std::string list = UserFolders::processEnvironment(variable).value_or("");
    if (list.empty())
        list = otherwise;
    std::vector<std::filesystem::path> paths;
    for (const auto part : list | std::views::split(':'))
        if (std::filesystem::path path(std::string(part.begin(), part.end())); path.is_absolute())
            paths.push_back(std::move(path));
    return paths;
}

std::vector<std::filesystem::path> systemDataFolders() {
    std::vector<std::filesystem::path> folders{"/usr/local/share", "/usr/share"};
    std::ranges::copy(pathList("XDG_DATA_DIRS", ""), std::back_inserter(folders));
    return folders;
}

} // namespace tidemark
