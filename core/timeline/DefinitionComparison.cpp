#include "core/timeline/DefinitionComparison.h"

#include "core/timeline/MapUnion.h"

namespace tidemark::DefinitionComparison {

std::vector<std::string> changedKeys(const BackgroundItem& before, const BackgroundItem& after) {
    std::vector<std::string> keys;
    if (!before.definitionFingerprints || !after.definitionFingerprints)
        return keys;
    forEachInUnion(*before.definitionFingerprints, *after.definitionFingerprints,
                   [&](const std::string& key, const std::string* was, const std::string* is) {
                       if (!was || !is || *was != *is)
                           keys.push_back(key);
                   });
    return keys;
}

} // namespace tidemark::DefinitionComparison
