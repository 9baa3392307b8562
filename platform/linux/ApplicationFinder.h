#pragma once

#include "platform/linux/DesktopEntries.h"

#include <string_view>
#include <vector>

#include <sys/types.h>

namespace tidemark {

/// Finds the application that a process or a window belongs to. Reads files; for one thread.
class ApplicationFinder {
public:
    explicit ApplicationFinder(DesktopEntries entries = DesktopEntries())
        : entries(std::move(entries)) {}

    /// By the unit in which the process was started, else by its program. Absent for a process that
    /// has ended, and for programs that are no application.
    std::optional<ClipApplication> ofProcess(pid_t process);
    /// By the name of a unit of the user's service manager (`ApplicationUnit`); absent unless an
    /// application has one of its identifiers.
    std::optional<ClipApplication> ofUnit(std::string_view name);
    /// By what is known of a window: the identifiers that it names; if it names none, the unit of
    /// its process, its classes (the best first) and its program. If no desktop entry is found,
    /// returns the first identifier or, for a window that names none, the first class in lower
    /// case.
    std::optional<ClipApplication> ofWindow(const std::vector<std::string>& ids,
                                            const std::vector<std::string>& classes,
                                            std::optional<pid_t> process = {});

    /// By the identifier that a window of a Wayland session names, which should be that of the
    /// desktop entry; used even if no entry has it.
    ClipApplication ofNamedWindow(const std::string& id);

private:
    std::optional<ClipApplication> ofProgram(pid_t process);

    DesktopEntries entries;
};

} // namespace tidemark
