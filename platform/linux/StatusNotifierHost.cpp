#include "platform/linux/StatusNotifierHost.h"

#include <utility>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

const QString watcherService = u"org.kde.StatusNotifierWatcher"_s;
const QString watcherPath = u"/StatusNotifierWatcher"_s;

} // namespace

StatusNotifierHost::StatusNotifierHost(const MessageBus& session, std::function<void(bool)> changed)
    : changed(std::move(changed)), watcher(session, watcherService, [this] { follow(); }) {}

void StatusNotifierHost::follow() {
    subscriptions.clear();
    rereading.cancel();
    setThere(false);
    if (!watcher.isThere())
        return;
    for (const auto& signal :
         {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        subscriptions.push_back(watcher.subscribe(watcherPath, watcherService, signal,
                                                  [this](const auto&) { rereading.request(); }));
    rereading.readNow();
}

void StatusNotifierHost::read() {
    watcher.readProperty(watcherPath, watcherService, u"IsStatusNotifierHostRegistered"_s,
                         [this](const QVariant& value) {
                             rereading.ended();
                             setThere(value.toBool());
                         });
}

void StatusNotifierHost::setThere(bool there) {
    if (std::exchange(isThere, there) != there)
        changed(there);
}

} // namespace tidemark
