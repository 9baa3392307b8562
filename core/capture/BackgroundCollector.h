#pragma once

#include "core/base/Clock.h"
#include "core/base/MachineFiles.h"
#include "core/capture/AutostartEntries.h"
#include "core/capture/CronDefinition.h"
#include "core/capture/Inventory.h"
#include "core/capture/InventoryRoots.h"
#include "core/capture/LaunchDefinition.h"
#include "core/capture/UnitItems.h"
#include "core/packages/PackageIndex.h"
#include "core/records/Application.h"

#include <span>
#include <stop_token>
#include <vector>

namespace tidemark {

/// A format in which service definitions are stored on disk, each in a file of its own.
struct BackgroundFormat {
    /// Decides by name only; also called for links, which are skipped if recognised.
    bool (*recognises)(const FolderEntry&);
    BackgroundDefinition::Result (*read)(const FolderEntry&, const MergedFolders&);
    /// True when `read` uses the name of the file only for the path in its result, so that a file
    /// with several names (hard links) needs to be read only once.
    bool isReadByContent = false;
    /// The format is looked for in roots of this family only.
    RootFamily family = RootFamily::any;
};

/// A format whose definitions are spread over several folders, where one file can override another.
struct BackgroundFamily {
    RootFamily family;
    /// Called with all folders of the family, sorted from the most preferred, and a `RootReading`
    /// for each folder in the same order.
    FamilyDefinitions (*read)(const MachineFiles&, const std::vector<std::filesystem::path>&,
                              std::vector<RootReading>&, const MergedFolders&);
};

/// Reads the definitions in folders.
namespace BackgroundCollector {

inline constexpr double secondsPerRoot = 8;
inline constexpr BackgroundFormat formats[] = {
    {LaunchDefinition::recognises, LaunchDefinition::read, /*isReadByContent=*/true},
    {CronDefinition::recognises, CronDefinition::readTable, false, RootFamily::cronTables},
    {CronDefinition::recognises, CronDefinition::readScript, false, RootFamily::cronScripts},
};
inline constexpr BackgroundFamily families[] = {
    {RootFamily::systemUnits, UnitItems::read},
    {RootFamily::userUnits, UnitItems::read},
    {RootFamily::autostart, AutostartEntries::read},
};
/// `association` of an item whose label begins with an application's identifier.
inline constexpr std::string_view byIdentifier = "Possible association based on bundle identifier";

/// The items are in the order of the roots, sorted by name within each; those of a
/// `BackgroundFamily` are at the position of its first root. An item is associated with an
/// application if exactly one of `apps` matches. Roots that are one folder by their canonical paths
/// are read once. Never fails: the result lists what was not read, for lack of permission or time
/// or because a stop was requested.
Inventory<BackgroundItem> collect(const std::vector<BackgroundRoot>& roots,
                                  const std::vector<Shared<Application>>& apps, Clock& clock,
                                  const std::stop_token& stop = {},
                                  std::span<const BackgroundFormat> knownFormats = formats,
                                  const MachineFiles& machine = {},
                                  PackageIndex::Reading* packages = nullptr);

} // namespace BackgroundCollector

} // namespace tidemark
