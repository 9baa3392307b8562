#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <string>
#include <string_view>

namespace tidemark {

/// An installation that the operating system itself remembers.
struct InstallationRecord {
    static constexpr std::string_view appleSource = "package_source_apple";
    static constexpr std::string_view otherSource = "package_source_other";
    /// A package that others needed.
    static constexpr std::string_view automaticSource = "package_source_automatic";

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
    /// The headline of its event.
    std::string title() const;
    /// Silent updates of the system's own data, and packages that came along with others.
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
