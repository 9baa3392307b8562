#pragma once

#include "app/ports/ApplicationSource.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Derives launches and quits of applications from their instances, such as units and windows,
/// which several sources may report. An application runs while it has an instance. Not thread-safe.
///
/// An application counts as launched when it still has an instance after some time: the second
/// start of a program that allows one process only is an instance that ends at once, and is
/// reported neither as a launch nor as a quit.
class ApplicationInstances {
public:
    /// Seconds from the first instance until the launch.
    static constexpr double settlingTime = 2;

    using Application = ApplicationSource::Application;
    using Change = ApplicationSource::Change;

    /// Adds an instance that existed before its source was followed. No launch is reported for it.
    void assume(const std::string& instance, const Application& application);
    /// Adds an instance that began at `moment`, at `now` of the monotonic clock.
    void add(const std::string& instance, const Application& application, Date moment, double now);
    /// Removes an instance. Returns the quit of the application when it was its last one, unless
    /// its launch has not been reported yet.
    std::optional<Change> remove(const std::string& instance, Date moment);

    /// Removes the instances whose name begins with this word, without reporting a quit: whether
    /// they still run is not known.
    void forget(std::string_view firstWord);

    /// The launches that have settled by now, with the moment when each began.
    std::vector<Change> settled(double now);
    /// When the next launch settles.
    std::optional<double> nextSettling() const;
    void clear();

private:
    struct Running {
        Application application;
        std::set<std::string> instances;
        /// A launch that has not been reported yet: when it began, and when it settles.
        std::optional<std::pair<Date, double>> launch;
    };

    /// The running applications by their identifiers.
    std::map<std::string, Running> running;
    /// The identifier of each instance.
    std::map<std::string, std::string> identifiers;
};

} // namespace tidemark
