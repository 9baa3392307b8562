#pragma once

#include "core/base/MachineFiles.h"
#include "core/capture/FolderListing.h"
#include "core/capture/InventoryRoots.h"
#include "core/packages/PackageIndex.h"
#include "core/records/Application.h"
#include "core/records/UnknownVersion.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>

namespace tidemark {

struct FoundApplication {
    Application application;
    /// Set when reading the version failed: the application must not be compared then, or it would
    /// be reported as updated.
    std::optional<PackageFailure> missesVersion = std::nullopt;
};

enum class ApplicationFailure {
    /// The entry is something else, such as a part of another program: nothing is counted.
    noApplication,
    /// The entry can't be read or lacks a required field.
    unreadable,
};

using ApplicationReading = std::expected<FoundApplication, ApplicationFailure>;

/// Where an application was found.
struct ApplicationSurroundings {
    const MachineFiles& machine;
    /// Path of the root without links.
    const std::filesystem::path& root;
    const ReadingBudget& budget;
    /// Null when versions of packages are not looked up.
    PackageIndex::Reading* packages = nullptr;
};

/// One form in which applications are stored on disk.
struct ApplicationFormat {
    /// Decides by name and kind of the entry and by the family of its root only; not called for
    /// links.
    bool (*recognises)(const FolderEntry&, RootFamily);
    ApplicationReading (*read)(const FolderEntry&, const ApplicationSurroundings&);
    /// True when such an application is a folder, whose size is measured.
    bool isFolder = false;
};

} // namespace tidemark
