#include "platform/linux/SessionDisplays.h"

#include "platform/linux/WaylandDisplays.h"
#include "platform/linux/X11Displays.h"

namespace tidemark {

SessionDisplays::SessionDisplays(std::function<void()> notify,
                                 std::shared_ptr<GraphicalSessions> held)
    : didChange(std::move(notify)), sessions(std::move(held)) {
    using Now = std::optional<std::vector<ObservedDisplay>>;
    const auto show = [this, post = calls.post()](Now now) {
        post([this, now = std::move(now)] {
            if (present == now)
                return;
            present = now;
            didChange();
        });
    };
    const auto hide = [show] { show(std::nullopt); };
    if (auto* wayland = sessions->wayland())
        reader = wayland->add({[show](WaylandConnection& connection) {
                                   return std::make_unique<WaylandDisplays>(connection, show);
                               },
                               hide});
    else if (auto* x11 = sessions->x11())
        reader = x11->add({[show](X11Connection& connection) {
                               return std::make_unique<X11Displays>(connection, show);
                           },
                           hide});
}

} // namespace tidemark
