#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// The variables in an os-release(5) file, with the shell quoting removed.
std::map<std::string, std::string> parseOsRelease(std::string_view text);

/// The name of the system with its version: `NAME` and `VERSION_ID`, or `PRETTY_NAME` when there is
/// no version; absent when it has neither.
std::optional<std::string> versionOf(const std::map<std::string, std::string>& osRelease);

} // namespace tidemark
