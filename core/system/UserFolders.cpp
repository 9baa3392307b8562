#include "core/system/UserFolders.h"

#include "core/base/Files.h"
#include "core/base/PrivateFolder.h"
#include "core/system/FoldersBelowHome.h"
#include "core/system/SystemFacts.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <unistd.h>

namespace tidemark::UserFolders {

namespace {

std::optional<std::filesystem::path> folder(const Environment& environment, const char* name) {
    auto value = environment(name);
    if (!value || !value->starts_with('/'))
        return std::nullopt;
    return std::move(*value);
}

std::filesystem::path home(const Environment& environment) {
    return SystemFacts::homeDirectory(environment("HOME"));
}

constexpr std::size_t largestUserDirs = std::size_t{64} * 1024;

std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return text;
}

/// The part between the quotes of `NAME="value"`, unchanged; absent for any other line.
std::optional<std::string_view> quotedValue(std::string_view line, std::string_view name) {
    line = withoutBlanks(line);
    if (!line.starts_with(name))
        return std::nullopt;
    line = withoutBlanks(line.substr(name.size()));
    if (!line.starts_with('='))
        return std::nullopt;
    line = withoutBlanks(line.substr(1));
    if (!line.starts_with('"'))
        return std::nullopt;
    line.remove_prefix(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            return line.substr(0, i);
        if (line[i] == '\\')
            ++i;
    }
    return std::nullopt;
}

std::string withoutBackslashes(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        plain += text[i];
    }
    return plain;
}

/// The path that a value stands for: an absolute one, or one that starts with "$HOME".
std::optional<std::filesystem::path> pathOf(std::string_view value,
                                            const std::filesystem::path& home) {
    constexpr std::string_view homeVariable = "$HOME";
    const bool isInHome = value.starts_with(homeVariable);
    if (isInHome)
        value.remove_prefix(homeVariable.size());
    if (!value.empty() && value.front() != '/')
        return std::nullopt;
    auto path = std::filesystem::path((isInHome ? home.native() : "") + withoutBackslashes(value))
                    .lexically_normal();
    if (path.has_relative_path() && !path.has_filename())
        path = path.parent_path();
    return path.empty() || path == home.lexically_normal() ? std::nullopt : std::optional(path);
}

std::string userDirs(const Environment& environment) {
    try {
        return readFile(configuration(environment) / "user-dirs.dirs", largestUserDirs);
    } catch (const FileError&) {
        return {};
    }
}

} // namespace

std::optional<std::string> processEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::filesystem::path data(const Environment& environment) {
    return folder(environment, "XDG_DATA_HOME")
        .value_or(home(environment) / FoldersBelowHome::data);
}

std::filesystem::path configuration(const Environment& environment) {
    return folder(environment, "XDG_CONFIG_HOME")
        .value_or(home(environment) / FoldersBelowHome::configuration);
}

std::optional<std::filesystem::path> localized(std::string_view kind,
                                               const Environment& environment) {
    const std::string variable = "XDG_" + std::string(kind) + "_DIR";
    std::optional<std::filesystem::path> path;
    std::istringstream lines(userDirs(environment));
    // The file is a shell script as well, so the last line counts.
    for (std::string line; std::getline(lines, line);)
        if (const auto value = quotedValue(line, variable))
            path = pathOf(*value, home(environment));
    return path;
}

std::optional<std::filesystem::path> runtime(const Environment& environment,
                                             const std::filesystem::path& sessions) {
    auto given = folder(environment, "XDG_RUNTIME_DIR");
    if (given && isPrivateFolder(*given))
        return given;
    const auto session = sessions / std::to_string(::geteuid());
    return isPrivateFolder(session) ? std::optional(session) : std::nullopt;
}

} // namespace tidemark::UserFolders
