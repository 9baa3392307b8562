#pragma once

#include "core/base/JsonFields.h"

#include <string>
#include <vector>

namespace tidemark {

/// What a service of the system says at this moment when it is asked.
struct ServiceReport {
    /// Such as "UPower".
    std::string name;
    /// What is recorded through it.
    std::string use;
    /// Such as "answers" or "not running".
    std::string state;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &ServiceReport::name, Shown},
                          Field{"use", &ServiceReport::use, Shown},
                          Field{"state", &ServiceReport::state, Shown}};
    }
};

/// For a report on problems. Each system defines this function in one source file.
namespace serviceReport {

/// Asks every service from which this system's adapters read, each for at most a few seconds, and
/// starts none. Runs an event loop, so it needs the application object of Qt. Main thread only.
std::vector<ServiceReport> ofSystem();

} // namespace serviceReport

} // namespace tidemark
