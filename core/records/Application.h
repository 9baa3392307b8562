#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <optional>
#include <string>

namespace tidemark {

/// One application bundle on disk, described by its own metadata.
struct Application {
    /// See `Recurring`.
    static constexpr bool recurs = true;

    std::string bundleID;
    std::string name;
    std::string version;
    std::string build;
    /// Absolute path of the bundle; also the record's identity.
    std::string path;
    /// Modification time of the bundle.
    std::optional<Date> modified;

    const std::string& id() const { return path; }

    bool operator==(const Application&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"bundleID", &Application::bundleID, Shown},
            Field{"name", &Application::name, Shown},
            Field{"version", &Application::version, Shown},
            Field{"build", &Application::build, Shown},
            Field{"path", &Application::path, Private},
            Field{"modified", &Application::modified},
        };
    }
};

} // namespace tidemark
