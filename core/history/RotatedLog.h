#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

/// Logs of the system that are set aside under a number now and then: "name", then "name.1" or
/// "name.1.gz", and so on, the higher the older.
namespace tidemark::RotatedLog {

/// Whether a text begins early enough to need nothing older in front of it.
using ReachesBack = std::function<bool(std::string_view)>;

/// The whole lines of a log, oldest first, with as many of its predecessors as `reachesBack`
/// asks for; empty where no such log stands. A log of more than `limit` bytes is read from its end.
/// Throws `FileError`, with the code `EFBIG` when `limit` bytes do not reach back.
std::string read(const std::filesystem::path& log, std::size_t limit,
                 const ReachesBack& reachesBack);

} // namespace tidemark::RotatedLog
