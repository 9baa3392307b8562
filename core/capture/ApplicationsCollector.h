#pragma once

#include "core/base/Clock.h"
#include "core/base/MachineFiles.h"
#include "core/capture/ApplicationBundle.h"
#include "core/capture/Inventory.h"
#include "core/capture/InventoryRoots.h"

#include <span>
#include <stop_token>
#include <vector>

namespace tidemark {

/// One way in which an application stands on disk.
struct ApplicationFormat {
    /// Decides by name and kind only; not called for links.
    bool (*recognises)(const FolderEntry&);
    /// Absent when the entry holds no application that can be read.
    std::optional<Application> (*read)(const FolderEntry&, const ReadingBudget&);
};

/// Finds the applications below folders by their metadata; runs and opens none of them.
namespace ApplicationsCollector {

inline constexpr double secondsPerRoot = 8;
/// Folders are listed down to this depth, the root being 0.
inline constexpr int deepestListing = 4;
inline constexpr ApplicationFormat formats[] = {
    {ApplicationBundle::recognises, ApplicationBundle::read},
};

/// Items come sorted by path; folders that lie in each other report an application twice. Never
/// fails: the result says what could not be read.
Inventory<Application> collect(const std::vector<ApplicationRoot>& roots, Clock& clock,
                               const std::stop_token& stop = {},
                               std::span<const ApplicationFormat> among = formats,
                               const MachineFiles& machine = {});

} // namespace ApplicationsCollector

} // namespace tidemark
