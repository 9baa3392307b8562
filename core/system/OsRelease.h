#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// The assignments of an os-release(5) file, with the quoting of the shell undone.
std::map<std::string, std::string> parseOsRelease(std::string_view text);

/// How the system names itself with its version: `NAME` and `VERSION_ID`, or `PRETTY_NAME` where
/// there is no version; absent when it says neither.
std::optional<std::string> versionOf(const std::map<std::string, std::string>& osRelease);

} // namespace tidemark
