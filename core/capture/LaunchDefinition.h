#pragma once

#include "core/capture/BackgroundDefinition.h"
#include "core/capture/FolderListing.h"
#include "core/capture/ProgramPaths.h"

#include <string_view>

/// A job as a property list in the folders of launchd.plist(5).
namespace tidemark::LaunchDefinition {

using BackgroundDefinition::Failure;

/// True for a name that ends in ".plist", written just so.
bool recognises(const FolderEntry& entry);

/// The item without `kind` and association, which are not the definition's own.
BackgroundDefinition::Result read(const FolderEntry& definition, const ProgramPaths& programs = {});

/// The same of the bytes of the definition.
BackgroundDefinition::Result described(std::string_view bytes, const FolderEntry& definition);

} // namespace tidemark::LaunchDefinition
