#pragma once

#include "core/capture/ApplicationFormat.h"

/// An application as a folder of Flatpak, named after its identifier. In it, a link "current" says
/// the architecture and branch in use, ARCHITECTURE/BRANCH, in that folder a link "active" the
/// installed state, a checksum, and the folder of that name holds what is installed and the file
/// "deploy". The links are read as text and never followed.
namespace tidemark::FlatpakApplication {

/// True for a folder that lies in a root of Flatpaks.
bool recognises(const FolderEntry& entry, RootFamily family);

/// No application: a folder without a "current" state.
ApplicationReading read(const FolderEntry& folder, const ApplicationSurroundings& where);

} // namespace tidemark::FlatpakApplication
