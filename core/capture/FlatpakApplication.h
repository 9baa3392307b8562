#pragma once

#include "core/capture/ApplicationFormat.h"

/// An application as a folder of Flatpak, named after its identifier. The link "current"
/// in it has the text ARCHITECTURE/BRANCH; the link "active" in that folder has the checksum of the
/// installed commit; and the folder of that name holds the installed files and the file "deploy".
/// The links are read as text and never followed.
namespace tidemark::FlatpakApplication {

/// True for a folder that lies in a root of Flatpaks.
bool recognises(const FolderEntry& entry, RootFamily family);

/// `noApplication` for a folder without the link "current".
ApplicationReading read(const FolderEntry& folder, const ApplicationSurroundings& where);

} // namespace tidemark::FlatpakApplication
