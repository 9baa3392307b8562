#pragma once

#include "core/base/Shared.h"
#include "core/packages/PackageIndex.h"
#include "core/records/Application.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tidemark {

/// Associates a background item with an application: the only one in the package that owns the
/// item's definition. A weak hint, since a package may contain several programs.
class PackageAssociation {
public:
    static constexpr std::string_view reason = "Possible association based on installed package";

    /// Without `packages`, no application is found. `applications` must outlive this object.
    PackageAssociation(const std::vector<Shared<Application>>& applications,
                       PackageIndex::Reading* packages);

    /// The application for the definition at a path without links; null when its package is not
    /// known or has no application or several.
    const Application* find(const std::string& definition) const;

private:
    PackageIndex::Reading* packages;
    /// The only application of each package; null for a package with several applications.
    std::unordered_map<std::string, const Application*> only;
};

} // namespace tidemark
