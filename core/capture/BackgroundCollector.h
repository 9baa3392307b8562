#pragma once

#include "core/capture/Inventory.h"
#include "core/capture/LaunchDefinition.h"
#include "core/records/Application.h"

#include <filesystem>
#include <span>
#include <vector>

namespace tidemark {

/// A folder of definitions and the kind of item that it yields.
struct BackgroundRoot {
    std::filesystem::path path;
    BackgroundItem::Kind kind = BackgroundItem::Kind::agent;

    bool operator==(const BackgroundRoot&) const = default;
};

/// One way in which a job that starts by itself stands on disk.
struct BackgroundFormat {
    /// Decides by name alone: a link to a definition is recognised too, and then skipped.
    bool (*recognises)(const FolderEntry&);
    std::expected<BackgroundItem, BackgroundDefinition::Failure> (*read)(const FolderEntry&);
};

/// Reads the definitions in folders, one level deep.
namespace BackgroundCollector {

inline constexpr BackgroundFormat formats[] = {
    {LaunchDefinition::recognises, LaunchDefinition::read},
};
/// The association by a label that begins with an application's identifier.
inline constexpr std::string_view byIdentifier = "Possible association based on bundle identifier";

/// Items come in the order of the roots, by name within each, tied to those of `apps` that they
/// belong to beyond doubt. Never fails: what could not be read is told by the result.
Inventory<BackgroundItem> collect(const std::vector<BackgroundRoot>& roots,
                                  const std::vector<Shared<Application>>& apps,
                                  std::span<const BackgroundFormat> among = formats);

} // namespace BackgroundCollector

} // namespace tidemark
