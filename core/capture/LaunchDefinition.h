#pragma once

#include "core/base/MergedFolders.h"
#include "core/capture/BackgroundDefinition.h"
#include "core/capture/FolderListing.h"

#include <string_view>

/// Reads service definitions that are property lists, as described in launchd.plist(5).
namespace tidemark::LaunchDefinition {

using BackgroundDefinition::Failure;

/// True for a name that ends in ".plist", in lower case.
bool recognises(const FolderEntry& entry);

/// The item without `kind` and `association`, which are not part of the definition.
BackgroundDefinition::Result read(const FolderEntry& definition, const MergedFolders& merged = {});

/// Makes that item from the bytes of the definition.
BackgroundDefinition::Result described(std::string_view bytes, const FolderEntry& definition);

} // namespace tidemark::LaunchDefinition
