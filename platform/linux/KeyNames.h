#pragma once

#include <string>

namespace tidemark {

/// The name of a key with its modifiers, such as "Meta+Ctrl+S", of Qt's number for it; made without
/// Qt's Gui library. Empty for a key that has no name here.
std::string keyName(int combination);

} // namespace tidemark
