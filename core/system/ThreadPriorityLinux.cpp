#include "core/system/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace tidemark {

void lowerThreadPriority() {
    // On Linux a nice value belongs to the one thread, against what POSIX says.
    constexpr int niceValue = 10;
    static_cast<void>(::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceValue));
}

} // namespace tidemark
