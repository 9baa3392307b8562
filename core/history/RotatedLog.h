#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

/// Reads logs that the system rotates: "name", then "name.1" or "name.1.gz", and so on, older ones
/// with higher numbers.
namespace tidemark::RotatedLog {

/// True when a text begins early enough, so that no older log is needed.
using ReachesBack = std::function<bool(std::string_view)>;

/// The complete lines of a log, oldest first, preceded by older logs until `reachesBack` is true;
/// empty when there is no log. Reads at most the last `limit` bytes. Throws `FileError`, with the
/// code `EFBIG` when a log does not fit into the limit before `reachesBack` is true.
std::string read(const std::filesystem::path& log, std::size_t limit,
                 const ReachesBack& reachesBack);

} // namespace tidemark::RotatedLog
