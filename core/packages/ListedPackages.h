#pragma once

#include "core/base/MergedFolders.h"
#include "core/packages/PackageDatabase.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace tidemark {

/// A database that is a list of files per package, read whole. The lists name every
/// file of a machine; only the files below the given folders are kept.
class ListedPackages : public PackageDatabase {
public:
    ListedPackages(const MachineFiles& machine, const OwnedFolders& folders);

    /// Adds a package and its files: one path per line, with or without the "/" in front. A path
    /// may lead through the link of a merged folder, such as "/lib".
    void add(const PackageOwner& package, std::string_view list);
    /// Called when some lists could not be read. Looking up a file that is in no list then fails.
    void markIncomplete() { isComplete = false; }

    Ownership owner(const std::string& path) override;

private:
    MergedFolders folders;
    /// Without the "/" in front, and with one at the end.
    std::vector<std::string> wanted;
    std::vector<PackageOwner> packages;
    /// The index in `packages` of the owner of each path.
    std::unordered_map<std::string, std::uint32_t> owners;
    bool isComplete = true;
};

/// A database that could not be read: every lookup fails.
class UnreadablePackages : public PackageDatabase {
public:
    explicit UnreadablePackages(PackageFailure why) : failure(why) {}
    Ownership owner(const std::string&) override { return std::unexpected(failure); }

private:
    PackageFailure failure;
};

} // namespace tidemark
