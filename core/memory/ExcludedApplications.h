#pragma once

#include <optional>
#include <string_view>

namespace tidemark {

/// Whether the identifier of an application is in a list with commas between its entries, as the
/// setting `memoryExcludedApps` has it. White space around an entry is ignored; letter case counts.
/// An application without an identifier is not in any list.
bool isExcludedApplication(std::string_view list, std::optional<std::string_view> id);

} // namespace tidemark
