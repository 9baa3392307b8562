#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/ports/ApplicationSource.h"
#include "platform/linux/ApplicationInstances.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Reports launches and quits of applications, from the instances that several sources notice: the
/// units in which desktops start them, and their windows. Main thread only.
class ApplicationLaunches final : public ApplicationSource {
public:
    /// Notices one kind of instances. The names of its instances begin with a word of its own.
    class Source {
    public:
        virtual ~Source() = default;

        /// Starts to call the functions of `launches` below, until `stop`.
        virtual void start(ApplicationLaunches& launches) = 0;
        virtual void stop() = 0;
    };

    explicit ApplicationLaunches(std::vector<std::unique_ptr<Source>> sources,
                                 AppClock& clock = AppClock::system());
    ~ApplicationLaunches() override;

    void start(Report report) override;
    void stop() override;

    /// To be called by sources: `assume` for an instance that existed before the source was
    /// started, `add` for one that began at `moment`, at `now` of the monotonic clock, and `remove`
    /// for one that ended.
    void assume(const std::string& instance, const Application& application);
    void add(const std::string& instance, const Application& application, Date moment, double now);
    void remove(const std::string& instance, Date moment);
    /// Removes all instances of a source, without reporting a quit: whether they still run is not
    /// known.
    void forget(std::string_view firstWord);

private:
    QCoro::Task<void> settle();

    const std::vector<std::unique_ptr<Source>> sources;
    AppClock& clock;
    Report report;
    ApplicationInstances instances;
    bool isSettling = false;
    TaskScope tasks;
};

} // namespace tidemark
