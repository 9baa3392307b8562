#pragma once

#include "core/base/JsonFields.h"

#include <map>
#include <optional>
#include <string>

namespace tidemark {

/// One background service: the definition of a job that the system starts by itself.
struct BackgroundItem {
    static constexpr bool recurs = true;

    enum class Kind { agent, daemon };
    /// The value of `association` for a program that lies inside the application's bundle.
    static constexpr std::string_view insideBundle = "Executable inside application bundle";

    /// The job's label.
    std::string identifier;
    /// Absolute path of the definition file; also the record's identity.
    std::string path;
    Kind kind = Kind::agent;
    /// The program that the definition starts.
    std::optional<std::string> program;
    /// The settings whose values may be shown, by definition key.
    std::optional<std::map<std::string, std::string>> safeSettings;
    /// A digest of the value of each definition key; the values themselves may be secret and are
    /// not stored.
    std::optional<std::map<std::string, std::string>> definitionFingerprints;
    /// Bundle identifier of the application that this item belongs to.
    std::optional<std::string> associatedAppID;
    /// How the application was determined, as a sentence.
    std::optional<std::string> association;

    const std::string& id() const { return path; }

    bool operator==(const BackgroundItem&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"identifier", &BackgroundItem::identifier, Shown},
            Field{"path", &BackgroundItem::path, Private},
            Field{"kind", &BackgroundItem::kind},
            Field{"program", &BackgroundItem::program, Private},
            Field{"safeSettings", &BackgroundItem::safeSettings, Shown},
            Field{"definitionFingerprints", &BackgroundItem::definitionFingerprints, Shown},
            Field{"associatedAppID", &BackgroundItem::associatedAppID, Shown},
            Field{"association", &BackgroundItem::association, Shown},
        };
    }
};

template <>
inline constexpr auto json::rawValues<BackgroundItem::Kind> =
    std::to_array<json::RawValue<BackgroundItem::Kind>>({
        {BackgroundItem::Kind::agent, "LaunchAgent"},
        {BackgroundItem::Kind::daemon, "LaunchDaemon"},
    });

} // namespace tidemark
