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

/// Free space first, then the measured folders of the latest capture, then the folders that only
/// earlier captures measured; both groups of folders are sorted by name. Children of folders are
/// not listed.
std::vector<StorageSubject> storageSubjects(const GrowthSource& source);

/// Finds a subject by its path or its name, in which upper and lower case of ASCII letters are the
/// same; "free" is free space. Children with daily points are searched only where no other subject
/// is found. Throws `Error` with a list of subjects to choose from when no subject or more than one
/// is found.
StorageSubject storageSubject(const GrowthSource& source, std::string_view nameOrPath);

} // namespace tidemark
