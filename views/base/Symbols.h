#pragma once

#include <QIcon>
#include <string_view>
#include <vector>

namespace tidemark {

/// The icon of a symbol in the icon theme of the desktop. Each symbol has two icon names, and the
/// first one that the theme has is used. Empty for an unknown symbol, and where the theme has
/// neither name.
QIcon symbolIcon(std::string_view symbol);

/// The names of all symbols.
std::vector<std::string_view> knownSymbols();

} // namespace tidemark
