#include "core/capture/AppImage.h"

#include "core/base/Files.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark::AppImage {

namespace {

constexpr std::string_view elfMark = "\x7F"
                                     "ELF";
constexpr std::string_view imageMark = "AI";
constexpr std::size_t imageMarkPlace = 8;
constexpr std::size_t typePlace = imageMarkPlace + imageMark.size();

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool hasMarks(std::string_view start) {
    return start.size() > typePlace && start.starts_with(elfMark)
           && start.substr(imageMarkPlace).starts_with(imageMark)
           && (start[typePlace] == 1 || start[typePlace] == 2);
}

/// Whether the part begins with digits, a dot and further digits.
bool isVersion(std::string_view part) {
    const auto isNumber = [&](std::size_t place) {
        return place < part.size() && isDigit(part[place]);
    };
    const auto dot =
        static_cast<std::size_t>(std::ranges::find_if_not(part, isDigit) - part.begin());
    return isNumber(0) && dot < part.size() && part[dot] == '.' && isNumber(dot + 1);
}

} // namespace

bool recognises(const FolderEntry& entry, RootFamily family) {
    return (family == RootFamily::ownApplications || family == RootFamily::any)
           && entry.kind == FolderEntry::Kind::regular
           && asciiLowercased(entry.extension()) == "appimage";
}

ApplicationReading read(const FolderEntry& file, const ApplicationSurroundings&) try {
    if (!hasMarks(file.readStart(typePlace + 1)))
        return std::unexpected(ApplicationFailure::noApplication);
    const std::string name = textFromBytes(file.path.stem().native());
    const std::string_view version = versionIn(name);
    return FoundApplication{{.bundleID = name,
                             .name = name,
                             .version = std::string(version.empty() ? unknownVersion : version),
                             .build = std::to_string(file.size),
                             .path = file.pathText(),
                             .modified = file.modified}};
} catch (const FileError&) {
    return std::unexpected(ApplicationFailure::unreadable);
}

std::string_view versionIn(std::string_view name) {
    while (!name.empty()) {
        std::string_view part = name.substr(0, name.find_first_of("-_ "));
        name.remove_prefix(std::min(part.size() + 1, name.size()));
        if (part.starts_with('v') || part.starts_with('V'))
            part.remove_prefix(1);
        if (isVersion(part))
            return part;
    }
    return {};
}

} // namespace tidemark::AppImage
