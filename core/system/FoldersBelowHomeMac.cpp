#include "core/system/FoldersBelowHome.h"

namespace tidemark {

const char* const FoldersBelowHome::data = "Library/Application Support";
const char* const FoldersBelowHome::configuration = "Library/Application Support";

} // namespace tidemark
