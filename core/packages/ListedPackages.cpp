#include "core/packages/ListedPackages.h"

#include <algorithm>

namespace tidemark {

ListedPackages::ListedPackages(const MachineFiles& machine, const OwnedFolders& asked)
    : folders(machine) {
    for (const auto& folder : asked)
        for (const auto& spelling : folders.spellings(folder))
            wanted.push_back(spelling.substr(spelling.starts_with('/') ? 1 : 0) + "/");
}

void ListedPackages::add(const PackageOwner& package, std::string_view list) {
    const auto number = static_cast<std::uint32_t>(packages.size());
    bool owns = false;
    while (!list.empty()) {
        std::string_view line = list.substr(0, list.find('\n'));
        list.remove_prefix(std::min(line.size() + 1, list.size()));
        if (line.starts_with('/'))
            line.remove_prefix(1);
        const bool isWanted = std::ranges::any_of(
            wanted, [&](const std::string& folder) { return line.starts_with(folder); });
        if (!isWanted)
            continue;
        // Two packages may list a file, after it moved from one to the other: the first one counts.
        owners.try_emplace(folders.canonical("/" + std::string(line)), number);
        owns = true;
    }
    if (owns)
        packages.push_back(package);
}

Ownership ListedPackages::owner(const std::string& path) {
    const auto found = owners.find(path);
    if (found != owners.end())
        return packages[found->second];
    if (!isComplete)
        return std::unexpected(PackageFailure::unreadable);
    return std::nullopt;
}

} // namespace tidemark
