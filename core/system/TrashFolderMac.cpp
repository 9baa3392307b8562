#include "core/base/Text.h"
#include "core/system/TrashFolder.h"

#include <algorithm>

namespace tidemark::TrashFolder {

namespace {

bool isUserNumber(std::string_view text) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return !text.empty() && std::ranges::all_of(text, isDigit);
}

} // namespace

bool is(std::string_view path, const UserFolders::Environment&) {
    const std::string_view name = lastPathComponent(path);
    return name == ".Trash"
           || (isUserNumber(name) && lastPathComponent(parentFolder(path)) == ".Trashes");
}

bool isFileManagersOwn(std::string_view folder, std::string_view name) {
    return name == ".DS_Store" && is(folder);
}

} // namespace tidemark::TrashFolder
