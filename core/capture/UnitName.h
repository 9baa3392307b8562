#pragma once

#include <string>
#include <string_view>

namespace tidemark {

/// Recognises the names of units and splits them.
namespace UnitName {

/// Whether a unit of this name can be an item: a service, or a timer, socket or path, which start
/// one.
bool canBeItem(std::string_view name);
/// The name from its last dot on, such as ".service"; empty for a name without a dot.
std::string_view suffix(std::string_view name);
std::string_view withoutSuffix(std::string_view name);
/// True for "x@.service". The names of its instances have a text after the "@".
bool isTemplate(std::string_view name);
/// "x@.service" for "x@y.service"; empty if it is not an instance.
std::string templateOf(std::string_view name);

} // namespace UnitName

} // namespace tidemark
