#pragma once

#include <string>

namespace tidemark {

/// The name of a key with its modifiers, such as "Meta+Ctrl+S"; empty for a key without a name in
/// the table. `combination` is Qt's number for them (`QKeyCombination`). Qt's own function is in
/// its Gui library, which the recorder does not use.
std::string keyName(int combination);

} // namespace tidemark
