#include "core/base/CanonicalPath.h"
#include "core/base/Text.h"
#include "core/system/TrashFolder.h"

#include <algorithm>

namespace tidemark::TrashFolder {

namespace {

constexpr std::string_view nameOnAMac = ".Trash";
constexpr std::string_view ownOfAVolume = ".Trash-";
constexpr std::string_view sharedOnAVolume = ".Trash";
/// The Trash in the default data folder of a user.
constexpr std::string_view usualPlace = "/.local/share/Trash";

bool isUserNumber(std::string_view text) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return !text.empty() && std::ranges::all_of(text, isDigit);
}

bool isOfVolume(std::string_view trash) {
    const std::string_view name = lastPathComponent(trash);
    if (name.starts_with(ownOfAVolume))
        return isUserNumber(name.substr(ownOfAVolume.size()));
    return isUserNumber(name) && lastPathComponent(parentFolder(trash)) == sharedOnAVolume;
}

bool isOfHome(std::string_view trash, const UserFolders::Environment& environment) {
    if (lastPathComponent(trash) != "Trash")
        return false;
    if (trash.ends_with(usualPlace))
        return true;
    const auto own = UserFolders::data(environment) / "Trash";
    return trash == own.native() || trash == canonicalPath(own).native();
}

} // namespace

bool is(std::string_view path, const UserFolders::Environment& environment) {
    const std::string_view name = lastPathComponent(path);
    if (name == nameOnAMac)
        return true;
    if (name != "files")
        return false;
    const std::string_view trash = parentFolder(path);
    return isOfVolume(trash) || isOfHome(trash, environment);
}

bool isFileManagersOwn(std::string_view folder, std::string_view name) {
    return name == ".DS_Store" && lastPathComponent(folder) == nameOnAMac;
}

} // namespace tidemark::TrashFolder
