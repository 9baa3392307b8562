#pragma once

#include <QIcon>
#include <string_view>
#include <vector>

namespace tidemark {

/// The image of a symbol from the icon theme of the desktop: the first of its two icon names that
/// the theme has. Empty for an unknown symbol, and where the theme has neither name.
QIcon symbolIcon(std::string_view symbol);

/// The names of all symbols.
std::vector<std::string_view> knownSymbols();

} // namespace tidemark
