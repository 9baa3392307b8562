#include "core/capture/PackageAssociation.h"

namespace tidemark {

PackageAssociation::PackageAssociation(const std::vector<Shared<Application>>& applications,
                                       PackageIndex::Reading* asked)
    : packages(asked) {
    if (!packages)
        return;
    for (const auto& application : applications) {
        const auto owner = packages->owner(application->path);
        if (!owner || !*owner)
            continue;
        const auto [place, isFirst] = only.try_emplace((*owner)->package, &*application);
        if (!isFirst)
            place->second = nullptr;
    }
}

const Application* PackageAssociation::find(const std::string& definition) const {
    if (only.empty())
        return nullptr;
    const auto owner = packages->owner(definition);
    if (!owner || !*owner)
        return nullptr;
    const auto found = only.find((*owner)->package);
    return found == only.end() ? nullptr : found->second;
}

} // namespace tidemark
