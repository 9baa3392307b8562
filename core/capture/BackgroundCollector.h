#pragma once

#include "core/base/Clock.h"
#include "core/capture/Inventory.h"
#include "core/capture/LaunchDefinition.h"
#include "core/records/Application.h"

#include <filesystem>
#include <span>
#include <stop_token>
#include <vector>

namespace tidemark {

/// A folder of definitions and the kind of the items in it.
struct BackgroundRoot {
    std::filesystem::path path;
    BackgroundItem::Kind kind = BackgroundItem::Kind::agent;

    bool operator==(const BackgroundRoot&) const = default;
};

/// A format in which service definitions are stored on disk.
struct BackgroundFormat {
    /// Decides by name only; also called for links, which are skipped if recognised.
    bool (*recognises)(const FolderEntry&);
    BackgroundDefinition::Result (*read)(const FolderEntry&);
    /// True when the result of `read` depends on the name for its path only, so that a file with
    /// several names is read once.
    bool isReadByContent = false;
};

/// Reads the definitions in folders, one level deep.
namespace BackgroundCollector {

inline constexpr double secondsPerRoot = 8;
inline constexpr BackgroundFormat formats[] = {
    {LaunchDefinition::recognises, LaunchDefinition::read, /*isReadByContent=*/true},
};
/// `association` of an item whose label begins with an application's identifier.
inline constexpr std::string_view byIdentifier = "Possible association based on bundle identifier";

/// The items are in the order of the roots, sorted by name within each. An item is associated with
/// an application if exactly one of `apps` matches. Never fails: the result lists what was not
/// read, for lack of permission or time or because a stop was requested.
Inventory<BackgroundItem> collect(const std::vector<BackgroundRoot>& roots,
                                  const std::vector<Shared<Application>>& apps, Clock& clock,
                                  const std::stop_token& stop = {},
                                  std::span<const BackgroundFormat> among = formats);

} // namespace BackgroundCollector

} // namespace tidemark
