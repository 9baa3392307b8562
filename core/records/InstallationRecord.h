#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <string>

namespace tidemark {

/// An installation that the operating system itself remembers.
struct InstallationRecord {
    std::string name;
    /// Empty when the report has none.
    std::string version;
    Date recordedAt;
    std::string packageSource;
    /// The moment of the report.
    Date importedAt;

    /// "installation-" and a digest of everything but `importedAt`, so that the same record read
    /// twice has one identity.
    std::string id() const;
    /// Silent updates of the system's own data.
    bool isRoutine() const;
    std::string sourceDescription() const;

    bool operator==(const InstallationRecord&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"name", &InstallationRecord::name, Shown},
            Field{"version", &InstallationRecord::version, Shown},
            Field{"recordedAt", &InstallationRecord::recordedAt},
            Field{"packageSource", &InstallationRecord::packageSource, Shown},
            Field{"importedAt", &InstallationRecord::importedAt},
        };
    }
};

} // namespace tidemark
