#pragma once

#include "core/base/MachineFiles.h"
#include "core/capture/FolderListing.h"
#include "core/capture/InventoryRoots.h"
#include "core/packages/PackageIndex.h"
#include "core/records/Application.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>

namespace tidemark {

/// What the version of an application is called where it has none that can be read.
inline constexpr std::string_view unknownVersion = "Unknown version";

struct FoundApplication {
    Application application;
    /// Set when the version is one that could not be read this time: the application is there, but
    /// must not be compared, or it would seem to be updated.
    std::optional<PackageFailure> missesVersion = std::nullopt;
};

enum class ApplicationFailure {
    /// The entry is something else, such as a part of another program: nothing is counted.
    noApplication,
    /// It can't be read or says too little.
    unreadable,
};

using ApplicationReading = std::expected<FoundApplication, ApplicationFailure>;

/// Where an application was found.
struct ApplicationSurroundings {
    const MachineFiles& machine;
    /// Path of the root without links.
    const std::filesystem::path& root;
    const ReadingBudget& budget;
    /// Null where no databases are asked: every version then is a format's own.
    PackageIndex::Reading* packages = nullptr;
};

/// One way in which an application stands on disk.
struct ApplicationFormat {
    /// Decides by name and kind of the entry, and by what names mean in its root; never asked about
    /// a link.
    bool (*recognises)(const FolderEntry&, RootFamily);
    ApplicationReading (*read)(const FolderEntry&, const ApplicationSurroundings&);
    /// Whether such an application is a folder, which has a size worth measuring.
    bool isFolder = false;
};

} // namespace tidemark
