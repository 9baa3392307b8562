#pragma once

#include "core/base/Clock.h"
#include "core/capture/ApplicationBundle.h"
#include "core/capture/Inventory.h"

#include <filesystem>
#include <span>
#include <stop_token>
#include <vector>

namespace tidemark {

/// A format in which applications are stored on disk.
struct ApplicationFormat {
    /// Decides by name and kind only; not called for links.
    bool (*recognises)(const FolderEntry&);
    /// Absent when the entry is not an application or can't be read.
    std::optional<Application> (*read)(const FolderEntry&, const ReadingBudget&);
};

/// Finds the applications below folders by reading their metadata, without running them.
namespace ApplicationsCollector {

inline constexpr double secondsPerRoot = 8;
/// Folders are listed down to this depth, the root being 0.
inline constexpr int deepestListing = 4;
inline constexpr ApplicationFormat formats[] = {
    {ApplicationBundle::recognises, ApplicationBundle::read},
};

/// The items are sorted by path. An application below two of the folders is reported twice. Never
/// fails: the result lists what could not be read.
Inventory<Application> collect(const std::vector<std::filesystem::path>& roots, Clock& clock,
                               const std::stop_token& stop = {},
                               std::span<const ApplicationFormat> among = formats);

} // namespace ApplicationsCollector

} // namespace tidemark
