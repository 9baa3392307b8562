#include "core/memory/ExcludedApplications.h"

#include "core/base/Text.h"

#include <algorithm>
#include <ranges>

namespace tidemark {

bool isExcludedApplication(std::string_view list, std::optional<std::string_view> id) {
    return id && std::ranges::any_of(list | std::views::split(','), [&](const auto entry) {
               return trimmed(std::string_view(entry.begin(), entry.end())) == *id;
           });
}

} // namespace tidemark
