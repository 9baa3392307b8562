#include "app/capture/FolderGrant.h"

#include "core/base/JsonDecoder.h"

#include <algorithm>
#include <optional>

namespace tidemark {

namespace {

/// The form in which this release and earlier ones store a grant.
struct StoredGrant {
    Uuid id;
    std::string path;
    Data bookmark;
    std::optional<FolderPurposes> purposes;
    std::optional<FolderPurposes> availablePurposes;
    /// Earlier releases stored a single purpose. It is read as text, so that an unknown one is an
    /// error only where `purposes` is missing.
    std::optional<std::string> purpose;

    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &StoredGrant::id, Internal},
            Field{"path", &StoredGrant::path, Private},
            Field{"bookmark", &StoredGrant::bookmark, Private},
            Field{"purposes", &StoredGrant::purposes},
            Field{"availablePurposes", &StoredGrant::availablePurposes},
            Field{"purpose", &StoredGrant::purpose, Shown},
        };
    }
};

struct Suggestion {
    std::string_view lastComponent;
    FolderPurpose purpose;
};
constexpr auto suggestions = std::to_array<Suggestion>({
    {"Applications", FolderPurpose::applications},
    {"LaunchAgents", FolderPurpose::launchAgents},
    {"LaunchDaemons", FolderPurpose::launchDaemons},
});

FolderPurposes purposesOf(const StoredGrant& stored) {
    if (stored.purposes)
        return *stored.purposes;
    const auto purpose = json::fromRawValue<FolderPurpose>(stored.purpose.value_or(""));
    if (!purpose)
        throw json::DecodingError("The folder " + stored.path + " has no purpose.");
    return {*purpose};
}

FolderGrant converted(StoredGrant stored) {
    FolderGrant grant{stored.id, stored.path, std::move(stored.bookmark), purposesOf(stored), {}};
    if (stored.availablePurposes) {
        grant.availablePurposes = *std::move(stored.availablePurposes);
    } else {
        grant.availablePurposes = FolderGrant::suggestedPurposes(grant.path);
        grant.availablePurposes.insert(grant.purposes.begin(), grant.purposes.end());
    }
    return grant;
}

} // namespace

std::filesystem::path standardizedPath(const std::filesystem::path& path) {
    const auto normal = path.lexically_normal();
    return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

FolderPurposes FolderGrant::suggestedPurposes(const std::filesystem::path& path) {
    FolderPurposes purposes{FolderPurpose::storage};
    for (const auto& suggestion : suggestions)
        if (standardizedPath(path).filename().native() == suggestion.lastComponent)
            purposes.insert(suggestion.purpose);
    return purposes;
}

std::vector<FolderGrant> FolderGrant::unified(std::vector<FolderGrant> grants) {
    std::vector<FolderGrant> result;
    for (auto& grant : grants) {
        grant.path = standardizedPath(grant.path).native();
        const auto same = std::ranges::find(result, grant.path, &FolderGrant::path);
        if (same == result.end()) {
            result.push_back(std::move(grant));
            continue;
        }
        same->purposes.merge(grant.purposes);
        same->availablePurposes.merge(grant.availablePurposes);
    }
    return result;
}

std::vector<FolderGrant> FolderGrant::decodeList(std::string_view bytes) {
    std::vector<FolderGrant> grants;
    for (auto& stored : json::decode<std::vector<StoredGrant>>(bytes))
        grants.push_back(converted(std::move(stored)));
    return grants;
}

} // namespace tidemark
