#include "core/system/FoldersBelowHome.h"

namespace tidemark {

// The defaults of the XDG Base Directory standard.
const char* const FoldersBelowHome::data = ".local/share";
const char* const FoldersBelowHome::configuration = ".config";

} // namespace tidemark
