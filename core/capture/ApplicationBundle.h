#pragma once

#include "core/capture/ApplicationFormat.h"

#include <optional>
#include <string_view>

/// Reads application bundles: folders whose names end in ".app", with a property list inside.
namespace tidemark::ApplicationBundle {

/// True for a bundle in a root of any family except `desktopEntries` and `flatpaks`.
bool recognises(const FolderEntry& entry, RootFamily family);

/// The application by its metadata: "Contents/Info.plist", or, where that is missing, the
/// "Info.plist" of the only bundle in "Wrapper". Unreadable when the file can't be read, is not a
/// property list, or has no bundle identifier. Links inside the bundle are not followed. The search
/// in "Wrapper" ends when the budget is spent.
ApplicationReading read(const FolderEntry& bundle, const ApplicationSurroundings& where);

/// The application described by the bytes of a bundle's property list; absent when they are no
/// property list or have no bundle identifier.
std::optional<Application> described(std::string_view metadata, const FolderEntry& bundle);

} // namespace tidemark::ApplicationBundle
