#pragma once

#include "core/growth/GrowthSource.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// What a chart shows the size of.
struct StorageSubject {
    static constexpr std::string_view freeSpaceName = "Free space";

    StorageSubjectKind kind = StorageSubjectKind::freeSpace;
    /// Absolute path; empty for free space.
    std::string path;
    /// The name that is shown: "Free space", or that of the folder.
    std::string name{freeSpaceName};
    /// True when the latest capture recorded it.
    bool isCurrent = false;

    bool operator==(const StorageSubject&) const = default;
};

/// Free space and every measured folder: free space first, then the folders of the latest capture,
/// then those that only earlier ones had, each by name. Children of folders are not listed.
std::vector<StorageSubject> storageSubjects(const GrowthSource& source);

/// The subject with this path, or the only one with this name, in any case of ASCII letters, also
/// among children with daily points; "free" is free space. Children are searched only where no
/// other subject is found. Throws `Error`, which names the possible ones, when there is none or
/// more than one.
StorageSubject storageSubject(const GrowthSource& source, std::string_view nameOrPath);

} // namespace tidemark
