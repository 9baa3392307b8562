#pragma once

#include "app/ports/ServiceReport.h"
#include "core/records/OperatingSystemObservation.h"
#include "core/records/Snapshot.h"
#include "recorder/DocumentReport.h"
#include "recorder/RecorderStatus.h"

#include <string>
#include <vector>

namespace tidemark {

/// All that helps to find out why something is not recorded. Without private details, so that it
/// can be shown to others: no path of the user, no name of the user, the machine, a network or a
/// device, and nothing that was recorded.
struct Diagnosis {
    /// A setting that is on or off.
    struct Setting {
        std::string key;
        std::string value;
        /// Why the setting has no effect on this machine; absent when it has one.
        std::optional<std::string> notAvailable;

        static constexpr auto fields() {
            return std::tuple{Field{"key", &Setting::key, Shown},
                              Field{"value", &Setting::value, Shown},
                              Field{"notAvailable", &Setting::notAvailable, Shown}};
        }
    };

    std::string version;
    std::string toolkit;
    OperatingSystemObservation system;
    Date clock;
    /// Seconds by which the local time is ahead of UTC.
    std::int64_t secondsEastOfUTC = 0;
    /// Whether the service is turned on and runs, as a sentence.
    std::string service;
    /// The answer to "status", with private details taken out of its problems.
    RecorderStatus recorder;
    /// What the last capture found, and what it could not read.
    std::vector<MonitorStatus> collectors;
    std::vector<std::string> issues;
    /// The latest date of all captures; after `clock` when that was set back.
    std::optional<Date> latestCapture;
    std::vector<Setting> settings;
    std::vector<ServiceReport> services;
    std::vector<DocumentReport> documents;
    /// The free bytes of the volume with the data folder.
    std::optional<std::int64_t> freeBytes;
    /// What is wrong, each as a sentence; see `findProblems`.
    std::vector<std::string> problems;

    static constexpr auto fields() {
        return std::tuple{Field{"version", &Diagnosis::version, Shown},
                          Field{"toolkit", &Diagnosis::toolkit, Shown},
                          Field{"system", &Diagnosis::system},
                          Field{"clock", &Diagnosis::clock},
                          Field{"secondsEastOfUTC", &Diagnosis::secondsEastOfUTC},
                          Field{"service", &Diagnosis::service, Shown},
                          Field{"recorder", &Diagnosis::recorder},
                          Field{"collectors", &Diagnosis::collectors},
                          Field{"issues", &Diagnosis::issues, Shown},
                          Field{"latestCapture", &Diagnosis::latestCapture},
                          Field{"settings", &Diagnosis::settings},
                          Field{"services", &Diagnosis::services},
                          Field{"documents", &Diagnosis::documents},
                          Field{"freeBytes", &Diagnosis::freeBytes},
                          Field{"problems", &Diagnosis::problems, Shown}};
    }
};

namespace diagnosis {

/// How much each collector of a capture found.
std::vector<MonitorStatus> collectors(const Snapshot& snapshot);

/// What is wrong according to the rest of the diagnosis: documents that can't be read or that
/// others can read, captures later than the clock, hardly any space.
std::vector<std::string> findProblems(const Diagnosis& diagnosis);

/// The diagnosis as lines of text.
std::string text(const Diagnosis& diagnosis);

} // namespace diagnosis

} // namespace tidemark
