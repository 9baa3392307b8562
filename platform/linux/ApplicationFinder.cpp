#include "platform/linux/ApplicationFinder.h"

#include "core/base/FileError.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "platform/linux/ApplicationUnit.h"

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t mostCgroupBytes = 65'536;

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
    if (error)
        return std::nullopt;
    // The kernel appends this mark to the path of a program that was replaced while it runs, for
    // example by an upgrade (proc_pid_exe(5)).
    constexpr std::string_view mark = " (deleted)";
    std::string name = program.filename().native();
    if (name.ends_with(mark))
        name.resize(name.size() - mark.size());
    return entries.withProgram(name);
}

std::optional<ClipApplication> ApplicationFinder::ofUnit(std::string_view name) {
    const auto unit = ApplicationUnit::parse(name);
    if (!unit)
        return std::nullopt;
    for (const auto& id : unit->identifiers)
        if (auto application = entries.withId(id))
            return application;
    return std::nullopt;
}

ClipApplication ApplicationFinder::ofNamedWindow(const std::string& id) {
    if (auto application = entries.withId(id))
        return *std::move(application);
    return entries.withWindowClass(id).value_or(ClipApplication{id, id});
}

std::optional<ClipApplication> ApplicationFinder::ofWindow(const std::vector<std::string>& ids,
                                                           const std::vector<std::string>& classes,
                                                           std::optional<pid_t> process) {
    for (const auto& id : ids)
        if (auto application = entries.withId(id))
            return application;
    if (!ids.empty())
        return ClipApplication{ids.front(), ids.front()};
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
