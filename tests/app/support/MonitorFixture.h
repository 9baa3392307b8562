#pragma once

#include "app/monitors/SwitchedMonitor.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tidemark::test {

/// What a monitor needs, and the records that it has made.
struct MonitorFixture : testing::Test {
    void start(ActivityMonitor& monitor) {
        monitor.start([this](SystemActivity activity) { records.push_back(std::move(activity)); });
    }
    void set(const SwitchKey& key, bool value) {
        preferences.set(key.name, value);
        settle();
    }
    void advance(double seconds) {
        clock.advance(seconds);
        settle();
    }
    /// The titles of all records since the last call, each with the seconds from the start of the
    /// clock to its time.
    std::string titles() {
        settle();
        std::string text;
        for (const auto& record : records)
            text += record.title() + " "
                    + std::to_string(static_cast<int>(record.timestamp - ManualAppClock::start))
                    + ", ";
        if (!records.empty())
            last = std::move(records.back());
        records.clear();
        return text;
    }

    MemoryPreferences preferences;
    NotificationCenter workspace;
    ManualAppClock clock;
    const SwitchedMonitor::Surroundings surroundings{preferences, workspace, clock};
    std::vector<SystemActivity> records;
    /// The last record that `titles` has listed.
    SystemActivity last;
};

/// A source of a monitor, which reports the values that the test has set. `didChange` is the
/// function that the monitor passed to it; empty while the monitor follows nothing.
template <class Port, class Values>
class MadeUpSource : public Port {
public:
    using DidChange = std::function<void()>;

    explicit MadeUpSource(const Values& values, DidChange& didChange)
        : values(values), didChange(didChange) {}
    ~MadeUpSource() override { didChange = nullptr; }

    /// Returns the function by which the monitor creates a `Source`.
    template <class Source>
    static auto creator(const Values& values, DidChange& didChange) {
        return [&](DidChange passed) {
            didChange = std::move(passed);
            return std::make_unique<Source>(values, didChange);
        };
    }

protected:
    const Values& values;

private:
    DidChange& didChange;
};

} // namespace tidemark::test
