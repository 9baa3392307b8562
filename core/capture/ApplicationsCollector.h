#pragma once

#include "core/base/Clock.h"
#include "core/capture/AppImage.h"
#include "core/capture/ApplicationBundle.h"
#include "core/capture/ApplicationFormat.h"
#include "core/capture/DesktopEntry.h"
#include "core/capture/FlatpakApplication.h"
#include "core/capture/Inventory.h"
#include "core/capture/InventoryRoots.h"

#include <stop_token>
#include <vector>

namespace tidemark {

/// Finds the applications below folders by reading their metadata, without running them.
namespace ApplicationsCollector {

inline constexpr double secondsPerRoot = 8;
/// Folders are listed down to this depth, the root being 0.
inline constexpr int deepestListing = 4;
inline constexpr ApplicationFormat formats[] = {
    {ApplicationBundle::recognises, ApplicationBundle::read, /*isFolder=*/true},
    {DesktopEntry::recognises, DesktopEntry::read},
    {FlatpakApplication::recognises, FlatpakApplication::read, /*isFolder=*/true},
    {AppImage::recognises, AppImage::read},
};

/// The options of a search.
struct Search {
    MachineFiles machine{};
    /// Finds the packages of applications, whose versions are recorded; null to record none.
    PackageIndex::Reading* packages = nullptr;
    /// True to find only applications that are folders, whose sizes are measured.
    bool foldersOnly = false;
};

/// The items are sorted by path. An application below two roots is reported twice. Roots
/// that are one folder by their canonical paths are read once. Of desktop entries with one
/// identifier the one in the last root is the application, and the others are excluded. An item
/// whose version could not be read is in `items`, but its path is excluded from comparison. Never
/// fails: the result lists what could not be read.
Inventory<Application> collect(const std::vector<ApplicationRoot>& roots, Clock& clock,
                               const std::stop_token& stop = {}, const Search& search = {});

} // namespace ApplicationsCollector

} // namespace tidemark
