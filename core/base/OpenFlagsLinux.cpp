#include "core/base/OpenFlags.h"

#include <fcntl.h>

namespace tidemark {

const int openFlags::toSearchFolder = O_PATH;

} // namespace tidemark
