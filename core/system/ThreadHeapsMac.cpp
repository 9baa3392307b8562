#include "core/system/ThreadHeaps.h"

namespace tidemark {

void limitThreadHeaps() {}

} // namespace tidemark
