#include "core/system/ThreadPriority.h"

#include <pthread/qos.h>

namespace tidemark {

void lowerThreadPriority() {
    static_cast<void>(::pthread_set_qos_class_self_np(QOS_CLASS_UTILITY, 0));
}

} // namespace tidemark
