#pragma once

#include "core/base/Data.h"
#include "core/base/JsonFields.h"
#include "core/base/Uuid.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// What a folder is read for.
enum class FolderPurpose { applications, launchAgents, launchDaemons, storage };

template <>
inline constexpr auto json::rawValues<FolderPurpose> =
    std::to_array<json::RawValue<FolderPurpose>>({
        {FolderPurpose::applications, "applications"},
        {FolderPurpose::launchAgents, "launchAgents"},
        {FolderPurpose::launchDaemons, "launchDaemons"},
        {FolderPurpose::storage, "storage"},
    });

using FolderPurposes = std::set<FolderPurpose>;

/// A folder that the user allowed to be read.
struct FolderGrant {
    Uuid id;
    std::string path;
    /// Used to find and open the folder again; see `BookmarkOperations`.
    Data bookmark;
    /// The purposes that it is tracked for. If empty, the grant is kept but skipped.
    FolderPurposes purposes;
    /// The purposes that it can be tracked for.
    FolderPurposes availablePurposes;

    /// Always storage, and the purpose that the last component of the path suggests, if any.
    static FolderPurposes suggestedPurposes(const std::filesystem::path& path);

    /// One grant per standardised path: the first one, with the purposes of all.
    static std::vector<FolderGrant> unified(std::vector<FolderGrant> grants);

    /// Reads a JSON array of grants written by this or an earlier release. Throws
    /// `json::DecodingError`.
    static std::vector<FolderGrant> decodeList(std::string_view bytes);

    bool operator==(const FolderGrant&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &FolderGrant::id, Internal},
            Field{"path", &FolderGrant::path, Private},
            Field{"bookmark", &FolderGrant::bookmark, Private},
            Field{"purposes", &FolderGrant::purposes},
            Field{"availablePurposes", &FolderGrant::availablePurposes},
        };
    }
};

/// The path without ".", ".." and a slash at the end. Does not access the disk.
std::filesystem::path standardizedPath(const std::filesystem::path& path);

} // namespace tidemark
