#include "core/capture/ApplicationPrecedence.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace tidemark::ApplicationPrecedence {

std::vector<bool> overridden(const std::vector<Candidate>& candidates) {
    std::unordered_map<std::string_view, std::size_t> least;
    for (const auto& candidate : candidates) {
        if (candidate.family != RootFamily::desktopEntries)
            continue;
        std::size_t& root = least.try_emplace(candidate.identifier, 0).first->second;
        root = std::max(root, candidate.root);
    }
    std::vector<bool> result;
    for (const auto& candidate : candidates)
        result.push_back(candidate.family == RootFamily::desktopEntries
                         && candidate.root < least.at(candidate.identifier));
    return result;
}

} // namespace tidemark::ApplicationPrecedence
