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
    /// What finds and opens the folder again; see `BookmarkOperations`.
    Data bookmark;
    /// What it is tracked for now. May be empty: the grant stays and is skipped.
    FolderPurposes purposes;
    /// What it can be tracked for.
    FolderPurposes availablePurposes;

    /// By the last component of the path alone.
    static FolderPurposes suggestedPurposes(const std::filesystem::path& path);

    /// One grant a path, standardised: the first stays, with the purposes of all.
    static std::vector<FolderGrant> unified(std::vector<FolderGrant> grants);

    /// Reads a JSON array of grants as this or an earlier release wrote them. Throws
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

/// Without ".", ".." and a slash at the end; of the text alone, without looking at the disk.
std::filesystem::path standardizedPath(const std::filesystem::path& path);

} // namespace tidemark
