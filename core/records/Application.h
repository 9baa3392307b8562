#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <optional>
#include <string>

namespace tidemark {

/// One application on disk: a bundle, a desktop entry, the folder of a Flatpak, or an AppImage.
struct Application {
    /// Equal applications of many snapshots are in memory once (`Recurring`).
    static constexpr bool recurs = true;

    std::string bundleID;
    std::string name;
    std::string version;
    std::string build;
    /// Absolute path of that file or folder; also the record's identity.
    std::string path;
    /// Modification time of that file or folder.
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
