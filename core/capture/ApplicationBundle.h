#pragma once

#include "core/capture/FolderListing.h"
#include "core/records/Application.h"

#include <optional>
#include <string_view>

/// Reads application bundles: folders whose names end in ".app", with a property list inside.
namespace tidemark::ApplicationBundle {

bool recognises(const FolderEntry& entry);

/// The application by its metadata: "Contents/Info.plist", or, where that is missing, the
/// "Info.plist" of the only bundle in "Wrapper". Absent when the file can't be read, is not a
/// property list, or has no bundle identifier. Links inside the bundle are not followed. The search
/// in "Wrapper" ends when `budget` is spent.
std::optional<Application> read(const FolderEntry& bundle, const ReadingBudget& budget);

/// The application described by the bytes of a bundle's property list.
std::optional<Application> described(std::string_view metadata, const FolderEntry& bundle);

} // namespace tidemark::ApplicationBundle
