#pragma once

#include <optional>
#include <string>
#include <string_view>

/// URLs with the scheme "file" (RFC 8089).
namespace tidemark::fileUrl {

/// The absolute path, as bytes, of a file of this machine: its URL has no host, "localhost" or the
/// name of this machine. Absent for any other text.
std::optional<std::string> path(std::string_view url);

/// The URL of an absolute path.
std::string of(std::string_view path);

} // namespace tidemark::fileUrl
