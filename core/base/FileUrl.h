#pragma once

#include <optional>
#include <string>
#include <string_view>

/// URLs with the scheme "file" (RFC 8089).
namespace tidemark::fileUrl {

/// The absolute path, as bytes, that the URL of a file on this machine names: its host is empty,
/// "localhost" or the name of this machine. Absent for any other text.
std::optional<std::string> path(std::string_view url);

/// The URL of an absolute path.
std::string of(std::string_view path);

} // namespace tidemark::fileUrl
