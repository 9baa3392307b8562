#include "core/system/ThreadHeaps.h"

#include <malloc.h>

namespace tidemark {

void limitThreadHeaps() {
    // With one heap, the event loop would often wait for another thread that allocates memory.
    ::mallopt(M_ARENA_MAX, 2);
}

} // namespace tidemark
