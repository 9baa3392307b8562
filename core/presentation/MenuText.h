#pragma once

#include <string_view>

namespace tidemark {

/// Commands for a clip, in the menu and in the inspector.
namespace menuText {

inline constexpr std::string_view showClip = "Show in Tidemark";
inline constexpr std::string_view copyClip = "Copy Again";
inline constexpr std::string_view pinClip = "Pin";
inline constexpr std::string_view unpinClip = "Unpin";

} // namespace menuText

} // namespace tidemark
