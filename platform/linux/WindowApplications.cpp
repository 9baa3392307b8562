#include "platform/linux/WindowApplications.h"

#include "app/base/Background.h"
#include "core/base/Error.h"
#include "platform/linux/WaylandApplications.h"
#include "platform/linux/X11Applications.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

WindowApplications::~WindowApplications() {
    WindowApplications::stop();
    tasks.drain();
}

void WindowApplications::start(ApplicationLaunches& of) {
    launches = &of;
    calls.emplace();
    if (uses.server == Server::x11)
        follow<X11Applications>(uses.sessions->x11(), uses.sessions->x11Applications());
    else
        follow<WaylandApplications>(uses.sessions->wayland(), uses.sessions->waylandApplications());
}

template <class Reader, class Session>
void WindowApplications::follow(Session* session,
                                const std::shared_ptr<ApplicationFinder>& finder) {
    if (session == nullptr)
        return;
    const auto changed = [this, post = calls->post()](const std::vector<ClipApplication>& now) {
        Identifiers ids;
        std::ranges::transform(now, std::inserter(ids, ids.end()), &ClipApplication::id);
        post([this, ids = std::move(ids)] { show(ids); });
    };
    const auto make = [changed, finder](auto& connection) {
        return std::make_unique<Reader>(connection, changed, *finder);
    };
    reader = session->add({make, [this, post = calls->post()] { post([this] { lose(); }); }});
}

void WindowApplications::stop() {
    launches = nullptr;
    reader.reset();
    calls.reset();
    forget();
}

void WindowApplications::show(Identifiers now) {
    const auto before = std::exchange(shown, std::move(now));
    for (const auto& id : *shown)
        if (!before || !before->contains(id)) {
            windowless.erase(id);
            tasks.start(open(id, !before));
        }
    for (const auto& id : before.value_or(Identifiers()))
        if (!shown->contains(id)) {
            windowless[id] = {uses.clock.now(), ++lastNumber};
            tasks.start(close(id));
        }
}

void WindowApplications::lose() {
    forget();
    launches->forget(firstWord());
}

void WindowApplications::forget() {
    shown.reset();
    windowless.clear();
    ++generation;
}

QCoro::Task<void> WindowApplications::open(std::string id, bool isAssumed) {
    const auto hold = tasks.hold();
    const auto began = generation;
    const Date moment = uses.clock.now();
    const double now = uses.clock.monotonicSeconds();
    const auto find = [id, folders = uses.folders](const std::stop_token&) {
        return desktopApplications::find({id}, folders());
    };
    std::optional<ApplicationSource::Application> application;
    try {
        application = co_await runInBackground(find, tasks.token());
    } catch (const Error& error) {
        qWarning("An application can't be identified. %s", error.what());
    }
    if (!application || began != generation)
        co_return;
    if (isAssumed)
        launches->assume(instanceOf(id), *application);
    else
        launches->add(instanceOf(id), *application, moment, now);
    // Its windows may have been closed before it was known which application it is.
    if (windowless.contains(id))
        tasks.start(close(id));
}

QCoro::Task<void> WindowApplications::close(std::string id) {
    const auto hold = tasks.hold();
    const auto closed = windowless.at(id);
    const bool isTimeOver = co_await uses.clock.sleep(windowlessTime, tasks.token());
    // Meanwhile it may have had a window again, and have lost it again.
    const auto now = windowless.find(id);
    if (isTimeOver && now != windowless.end() && now->second.number == closed.number)
        launches->remove(instanceOf(id), closed.since);
}

std::string_view WindowApplications::firstWord() const {
    return uses.server == Server::x11 ? "X11 window " : "Wayland window ";
}

std::string WindowApplications::instanceOf(const std::string& id) const {
    return std::string(firstWord()) + id;
}

} // namespace tidemark
