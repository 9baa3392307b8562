#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The service of systemd's user manager that this process is, systemd.exec(5).
namespace tidemark::userService {

/// `cgroups` is the content of /proc/self/cgroup (cgroups(7)). Absent when it has no name of a
/// service at the end of its path.
std::optional<std::string> nameIn(std::string_view cgroups);

} // namespace tidemark::userService
