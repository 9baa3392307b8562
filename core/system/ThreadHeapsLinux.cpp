#include "core/system/ThreadHeaps.h"

#include <malloc.h>

namespace tidemark {

void limitThreadHeaps() {
    // Not one, so that the event loop seldom waits for a thread that allocates at the same time.
    ::mallopt(M_ARENA_MAX, 2);
}

} // namespace tidemark
