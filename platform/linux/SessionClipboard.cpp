#include "platform/linux/SessionClipboard.h"

#include "platform/linux/DataControl.h"
#include "platform/linux/WaylandClipboard.h"
#include "platform/linux/WaylandSelectionOwner.h"
#include "platform/linux/X11Clipboard.h"
#include "platform/linux/X11SelectionOwner.h"

namespace tidemark {

namespace {

constexpr std::string_view noProtocol =
    "This desktop does not let other programs watch the clipboard.";

/// What to put on the clipboard when the first connection is made; absent after that, so that a
/// later connection does not put it there again.
using Once = std::optional<std::vector<ClipData>>;

} // namespace

void SessionClipboard::watch(std::string excluded, Copied copied, AccessChanged accessChanged) {
    watching =
        std::make_unique<Watch>(std::move(excluded), std::move(copied), std::move(accessChanged));
    if (sessions->wayland() != nullptr)
        watchWayland();
    else if (sessions->x11() != nullptr)
        watchX11();
    else
        accessPosted()({.absence = std::string(noSession)});
}

void SessionClipboard::unwatch() {
    watching.reset();
}

Clipboard::AccessChanged SessionClipboard::accessPosted() const {
    return [post = watching->calls.post(), changed = watching->accessChanged](
               const ClipboardAccess& access) { post([changed, access] { changed(access); }); };
}

ClipFollower::Setup SessionClipboard::followerSetup() const {
    auto copied = [post = watching->calls.post(), copied = watching->copied](CopiedItem item) {
        // Shared, because the function is copied on its way and the item may be large.
        const auto shared = std::make_shared<CopiedItem>(std::move(item));
        post([copied, shared] { copied(std::move(*shared)); });
    };
    return {watching->excluded, std::move(copied), seconds};
}

void SessionClipboard::watchWayland() {
    const auto tryX11 = [this, post = watching->calls.post()] { post([this] { watchX11(); }); };
    auto make = [setup = WaylandClipboard::Setup{followerSetup(), accessPosted()},
                 applications = sessions->waylandApplications(),
                 tryX11](WaylandConnection& connection) -> std::unique_ptr<DisplayReader> {
        if (dataControl::isOffered(connection))
            return std::make_unique<WaylandClipboard>(connection, setup, *applications);
        tryX11();
        return nullptr;
    };
    watching->wayland = sessions->wayland()->add({std::move(make), [changed = accessPosted()] {
                                                      changed({.absence = std::string(noSession)});
                                                  }});
}

void SessionClipboard::watchX11() {
    if (sessions->x11() == nullptr)
        return accessPosted()({.absence = std::string(noProtocol)});
    auto make = [setup = X11Clipboard::Setup{followerSetup(), accessPosted(),
                                             sessions->wayland() != nullptr},
                 applications = sessions->x11Applications()](X11Connection& connection) {
        return std::make_unique<X11Clipboard>(connection, setup, *applications);
    };
    watching->x11 = sessions->x11()->add({std::move(make), [changed = accessPosted()] {
                                              changed({.absence = std::string(noSession)});
                                          }});
}

bool SessionClipboard::put(std::vector<ClipData> contents) {
    if (sessions->wayland() == nullptr)
        return putOnX11(std::move(contents));
    const auto tryX11 = [this, post = calls.post()](std::vector<ClipData> refused) {
        post([this, refused = std::move(refused)] { putOnX11(refused); });
    };
    auto make = [once = std::make_shared<Once>(std::move(contents)),
                 tryX11](WaylandConnection& connection) -> std::unique_ptr<DisplayReader> {
        if (!*once)
            return nullptr;
        auto data = *std::exchange(*once, {});
        if (dataControl::isOffered(connection))
            return std::make_unique<WaylandSelectionOwner>(connection, std::move(data));
        tryX11(std::move(data));
        return nullptr;
    };
    owned = sessions->wayland()->add({std::move(make), [] {}});
    return true;
}

bool SessionClipboard::putOnX11(std::vector<ClipData> contents) {
    if (sessions->x11() == nullptr)
        return false;
    auto make = [once = std::make_shared<Once>(std::move(contents))](
                    X11Connection& connection) -> std::unique_ptr<DisplayReader> {
        if (!*once)
            return nullptr;
        return std::make_unique<X11SelectionOwner>(connection, *std::exchange(*once, {}));
    };
    owned = sessions->x11()->add({std::move(make), [] {}});
    return true;
}

} // namespace tidemark
