#pragma once

#include "core/records/BackgroundItem.h"

#include <filesystem>
#include <utility>

namespace tidemark {

/// The meaning of the names in a folder depends on the folder: ".service" is a unit in one folder
/// and an activation file in another, ".desktop" an application in one and a start-up entry in
/// another. Each root of an inventory therefore has a family, and each format is read only in
/// certain families.
enum class RootFamily {
    /// A folder without a meaning of its own: bundles, AppImages, and property lists of jobs.
    any,
    /// Desktop entries below a folder "applications" (desktop-entry-spec).
    desktopEntries,
    /// One folder per installed application, with its files (flatpak-installation(5)).
    flatpaks,
    /// Folders into which users put AppImages and bundles themselves.
    ownApplications,
    /// Units of the manager of one user, and of the manager of the system (systemd.unit(5)).
    userUnits,
    systemUnits,
    /// Desktop entries that a session starts (autostart-spec).
    autostart,
    /// Tables of commands, as /etc/cron.d, and scripts, as /etc/cron.daily (cron(8)).
    cronTables,
    cronScripts,
};

/// A folder searched for applications.
struct ApplicationRoot {
    std::filesystem::path path;
    RootFamily family = RootFamily::any;

    /// Not explicit, so that a path alone converts to a root of `RootFamily::any`.
    ApplicationRoot(std::filesystem::path folder, RootFamily itsFamily = RootFamily::any)
        : path(std::move(folder)), family(itsFamily) {}

    bool operator==(const ApplicationRoot&) const = default;
};

/// A folder of definitions and the kind of item that it yields.
struct BackgroundRoot {
    std::filesystem::path path;
    BackgroundItem::Kind kind = BackgroundItem::Kind::agent;
    RootFamily family = RootFamily::any;

    bool operator==(const BackgroundRoot&) const = default;
};

} // namespace tidemark
