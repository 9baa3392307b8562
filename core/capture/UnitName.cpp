#include "core/capture/UnitName.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

constexpr auto itemSuffixes =
    std::to_array<std::string_view>({".service", ".timer", ".socket", ".path"});

} // namespace

bool UnitName::canBeItem(std::string_view name) {
    return std::ranges::any_of(itemSuffixes, [&](auto end) { return name.ends_with(end); })
           && !withoutSuffix(name).empty();
}

std::string_view UnitName::suffix(std::string_view name) {
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot);
}

std::string_view UnitName::withoutSuffix(std::string_view name) {
    return name.substr(0, name.size() - suffix(name).size());
}

bool UnitName::isTemplate(std::string_view name) {
    return withoutSuffix(name).ends_with('@');
}

std::string UnitName::templateOf(std::string_view name) {
    const auto at = name.find('@');
    if (at == std::string_view::npos || isTemplate(name))
        return {};
    return std::string(name.substr(0, at + 1)) + std::string(suffix(name));
}

} // namespace tidemark
