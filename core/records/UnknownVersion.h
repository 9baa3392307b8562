#pragma once

#include <string_view>

namespace tidemark {

/// The version of an application for which none is recorded.
inline constexpr std::string_view unknownVersion = "Unknown version";

} // namespace tidemark
