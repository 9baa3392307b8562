#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// What is stored of the URL that a file was downloaded from: scheme, host, port and path. User
/// name, password, query and fragment are left out, because they often contain access tokens.
/// Absent for other schemes than "http" and "https", and for a text that is no URL.
std::optional<std::string> webOrigin(std::string_view url);

} // namespace tidemark
