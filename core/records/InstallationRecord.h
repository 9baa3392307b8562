#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <string>
#include <string_view>

namespace tidemark {

/// An installation from the operating system's own log.
struct InstallationRecord {
    static constexpr std::string_view appleSource = "package_source_apple";
    static constexpr std::string_view otherSource = "package_source_other";
    /// The source of a package that was installed because others need it.
    static constexpr std::string_view automaticSource = "package_source_automatic";

    std::string name;
    /// Empty when the log has none.
    std::string version;
    Date recordedAt;
    std::string packageSource;
    /// When the log was read.
    Date importedAt;

    /// "installation-" and a digest of everything but `importedAt`, so that reading the same record
    /// twice gives the same id.
    std::string id() const;
    /// The headline of its event.
    std::string title() const;
    /// True for packages that were installed because others need them, and for updates of some of
    /// the system's own data, which are recognised by their names.
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
