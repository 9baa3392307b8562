#include "core/system/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace tidemark {

void lowerThreadPriority() {
    // On Linux, unlike POSIX, a nice value applies to one thread only.
    constexpr int niceValue = 10;
    static_cast<void>(::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceValue));
}

} // namespace tidemark
