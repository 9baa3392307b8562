#include "platform/linux/ApplicationFinder.h"

#include "core/base/FileError.h"
#include "core/base/Files.h"
#include "core/base/Text.h"

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t mostCgroupBytes = 65'536;

/// systemd.unit(5): a unit has "-" in a part of its name as "\x2d".
std::string withoutEscapes(std::string_view text) {
    constexpr std::string_view hyphen = "\\x2d";
    std::string plain;
    for (std::size_t place = 0; place < text.size();) {
        const bool isHyphen = text.substr(place).starts_with(hyphen);
        plain += isHyphen ? '-' : text[place];
        place += isHyphen ? hyphen.size() : 1;
    }
    return plain;
}

fs::path folderOf(pid_t process) {
    return fs::path("/proc") / std::to_string(process);
}

/// The unit in which a process runs: the last one in the path of its control group (cgroups(7)).
std::string unitOf(pid_t process) {
    try {
        const auto groups = readFile(folderOf(process) / "cgroup", mostCgroupBytes);
        return std::string(lastPathComponent(trimmed(groups)));
    } catch (const FileError&) {
        return {};
    }
}

} // namespace

std::optional<ClipApplication> ApplicationFinder::ofProcess(pid_t process) {
    auto application = ofUnit(unitOf(process));
    return application ? application : ofProgram(process);
}

std::optional<ClipApplication> ApplicationFinder::ofProgram(pid_t process) {
    std::error_code error;
    const fs::path program = fs::read_symlink(folderOf(process) / "exe", error);
    return error ? std::nullopt : entries.withProgram(program.filename().native());
}

std::optional<ClipApplication> ApplicationFinder::ofUnit(std::string_view unit) {
    const bool isScope = unit.ends_with(".scope");
    if (!isScope && !unit.ends_with(".service"))
        return std::nullopt;
    std::string_view name = unit.substr(0, unit.rfind('.'));
    // Names of units end with a number that makes them unique: of a scope after "-", of a service
    // after "@".
    name = name.substr(0, isScope ? name.rfind('-') : name.find('@'));
    // A snap's unit is "snap.PACKAGE.APPLICATION", its entry "PACKAGE_APPLICATION".
    if (constexpr std::string_view snap = "snap."; name.starts_with(snap)) {
        std::string id(name.substr(snap.size()));
        if (const auto dot = id.find('.'); dot != id.npos)
            id[dot] = '_';
        return entries.withId(id);
    }
    // The launcher before the identifier may be missing, and an identifier may have a "-" itself.
    for (auto hyphen = name.find('-'); hyphen != name.npos; hyphen = name.find('-')) {
        name.remove_prefix(hyphen + 1);
        if (auto application = entries.withId(withoutEscapes(name)))
            return application;
    }
    return std::nullopt;
}

std::optional<ClipApplication> ApplicationFinder::ofWindow(const std::vector<std::string>& ids,
                                                           const std::vector<std::string>& classes,
                                                           std::optional<pid_t> process) {
    for (const auto& id : ids)
        return entries.withId(id).value_or(ClipApplication{id, id});
    if (auto application = process ? ofUnit(unitOf(*process)) : std::nullopt)
        return application;
    for (const auto& name : classes)
        if (auto application = entries.withWindowClass(name))
            return application;
    if (auto application = process ? ofProgram(*process) : std::nullopt)
        return application;
    for (const auto& name : classes)
        return ClipApplication{asciiLowercased(name), name};
    return std::nullopt;
}

} // namespace tidemark
