#pragma once

#include "app/base/AppClock.h"
#include "app/base/MainThreadCalls.h"
#include "app/base/TaskScope.h"
#include "platform/linux/ApplicationLaunches.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/GraphicalSessions.h"

#include <map>
#include <memory>
#include <optional>
#include <set>

namespace tidemark {

/// Reports launches and quits of applications by their windows on a display server
/// (`X11Applications`, `WaylandApplications`). This also notices programs that a desktop or a
/// launcher starts without a unit of systemd. Only those with a desktop entry count. Main thread
/// only.
class WindowApplications final : public ApplicationLaunches::Source {
public:
    /// Seconds for which an application may be without a window, as while its window is replaced
    /// by another one, or while another window manager takes over.
    static constexpr double windowlessTime = 2;

    enum class Server { x11, wayland };

    struct Setup {
        Server server = Server::x11;
        std::shared_ptr<GraphicalSessions> sessions = GraphicalSessions::ofProcess();
        AppClock& clock = AppClock::system();
        /// The folders with desktop entries. Called on any thread.
        std::function<std::vector<std::filesystem::path>()> folders = &desktopApplications::folders;
    };

    explicit WindowApplications(Setup setup) : uses(std::move(setup)) {}
    ~WindowApplications() override;

    void start(ApplicationLaunches& launches) override;
    void stop() override;

    /// True when the windows that exist are known and changes are followed.
    bool isFollowing() const { return shown.has_value(); }

private:
    using Identifiers = std::set<std::string>;
    /// An application without a window: since when, and a number of its own for each such time.
    struct Windowless {
        Date since;
        std::uint64_t number = 0;
    };

    /// Follows the windows of a session by a `Reader`; does nothing where there is no session.
    template <class Reader, class Session>
    void follow(Session* session, const std::shared_ptr<ApplicationFinder>& finder);
    void show(Identifiers now);
    /// There is no server at present.
    void lose();
    /// Makes the applications that have a window unknown.
    void forget();
    QCoro::Task<void> open(std::string id, bool isAssumed);
    /// Reports that an application quit if it is without a window for `windowlessTime` from now.
    QCoro::Task<void> close(std::string id);
    /// The words with which the results of `instanceOf` begin.
    std::string_view firstWord() const;
    std::string instanceOf(const std::string& id) const;

    const Setup uses;
    ApplicationLaunches* launches = nullptr;
    /// The applications that have a window; absent until they are known.
    std::optional<Identifiers> shown;
    /// Those that had a window and have none at present, by identifier.
    std::map<std::string, Windowless> windowless;
    std::uint64_t lastNumber = 0;
    /// Incremented when `shown` becomes absent; an `open` that began before has no effect then.
    std::uint64_t generation = 0;
    /// Replaced by each `start`, so that calls that an earlier one has posted are dropped.
    std::optional<MainThreadCalls> calls;
    std::shared_ptr<void> reader;
    TaskScope tasks;
};

} // namespace tidemark
