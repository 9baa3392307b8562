#include "app/base/Observable.h"

#include <utility>

namespace tidemark {

void Observable::noteChange() {
    if (std::exchange(isAnnounced, true))
        return;
    const auto announce = [this] {
        // Before the observers are called: what they change is announced in turn.
        isAnnounced = false;
        Q_EMIT changed();
    };
    QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
}

} // namespace tidemark
