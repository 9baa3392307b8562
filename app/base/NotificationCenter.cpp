#include "app/base/NotificationCenter.h"

#include <QScopeGuard>
#include <utility>
#include <vector>

namespace tidemark {

NotificationCenter::Token::Token(Token&& other) noexcept
    : observers(std::exchange(other.observers, {})), id(other.id) {}

NotificationCenter::Token& NotificationCenter::Token::operator=(Token&& other) noexcept {
    if (this != &other) {
        remove();
        observers = std::exchange(other.observers, {});
        id = other.id;
    }
    return *this;
}

void NotificationCenter::Token::remove() {
    if (const auto all = std::exchange(observers, {}).lock())
        all->byId.erase(id);
}

NotificationCenter::Token NotificationCenter::observe(Notification notification,
                                                      Callback callback) {
    const std::uint64_t id = ++observers->lastId;
    observers->byId.emplace(
        id, Observer{notification, std::make_shared<const Callback>(std::move(callback))});
    return {observers, id};
}

void NotificationCenter::post(Notification notification) {
    // A copy, since a callback may destroy the center.
    const auto all = observers;
    all->waiting.push_back(notification);
    if (std::exchange(all->isDelivering, true))
        return;
    const auto end = qScopeGuard([&] { all->isDelivering = false; });
    while (!all->waiting.empty()) {
        const Notification next = all->waiting.front();
        all->waiting.pop_front();
        all->deliver(next);
    }
}

void NotificationCenter::Observers::deliver(Notification notification) const {
    // A copy, since a callback may remove observers.
    std::vector<std::uint64_t> ids;
    for (const auto& [id, observer] : byId)
        if (observer.notification == notification)
            ids.push_back(id);
    for (const std::uint64_t id : ids) {
        const auto found = byId.find(id);
        if (found == byId.end())
            continue;
        const auto callback = found->second.callback;
        (*callback)();
    }
}

} // namespace tidemark
