#include "platform/linux/DesktopTrayHost.h"

#include <utility>

namespace tidemark {

DesktopTrayHost::DesktopTrayHost(const MessageBus& session, std::function<void(bool)> given)
    : changed(std::move(given)), notifier(session,
                                          [this](bool isThere) {
                                              hasNotifier = isThere;
                                              report();
                                          }),
      embedder([this](bool isThere) {
          hasEmbedder = isThere;
          // While there is a host of status notifier items, the icon is such an item, and an
          // embedder changes nothing.
          if (!hasNotifier)
              report();
      }) {}

void DesktopTrayHost::report() {
    changed(hasNotifier || hasEmbedder);
}

} // namespace tidemark
