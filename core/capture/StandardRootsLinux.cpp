#include "core/capture/StandardRoots.h"
#include "core/system/SystemFacts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace tidemark::StandardRoots {

namespace {

namespace fs = std::filesystem;
using Kind = BackgroundItem::Kind;

/// A folder that is no standard root is of this `family` when its path ends with `end`.
struct NamedFamily {
    std::string_view end;
    RootFamily family;
};
constexpr auto applicationFamilies = std::to_array<NamedFamily>({
    {"/applications", RootFamily::desktopEntries},
    {"/flatpak/app", RootFamily::flatpaks},
    {"/Applications", RootFamily::ownApplications},
});
constexpr auto backgroundFamilies = std::to_array<NamedFamily>({
    {"/systemd/user", RootFamily::userUnits},
    {"/systemd/system", RootFamily::systemUnits},
    {"/autostart", RootFamily::autostart},
    {"/cron.d", RootFamily::cronTables},
    {"/cron.hourly", RootFamily::cronScripts},
    {"/cron.daily", RootFamily::cronScripts},
    {"/cron.weekly", RootFamily::cronScripts},
    {"/cron.monthly", RootFamily::cronScripts},
});

/// Folders of XDG_DATA_DIRS whose path ends like this are left out: they hold only links to files
/// that are read elsewhere.
constexpr std::string_view linksToFlatpaks = "flatpak/exports/share";

/// The value of an environment variable; `otherwise` when it is not set or empty, or when `places`
/// is of another machine than the one this program runs on.
std::string variable(const Places& places, const char* name, std::string otherwise) {
    if (places.machine.isElsewhere())
        return otherwise;
    auto value = places.environment(name);
    return value && !value->empty() ? *std::move(value) : otherwise;
}

/// The folder that the variable `name` holds if that is an absolute path, otherwise `belowHome` in
/// the home folder.
fs::path userFolder(const Places& places, const char* name, const char* belowHome) {
    const fs::path usual = places.home / belowHome;
    const fs::path moved = variable(places, name, usual.native());
    return moved.is_absolute() ? moved : usual;
}

fs::path configurationHome(const Places& places) {
    return userFolder(places, "XDG_CONFIG_HOME", ".config");
}

fs::path dataHome(const Places& places) {
    return userFolder(places, "XDG_DATA_HOME", ".local/share");
}

constexpr const char* sharedAutostart = "/etc/xdg/autostart";

fs::path ownAutostart(const Places& places) {
    return configurationHome(places) / "autostart";
}

/// The absolute paths of a list with colons between them.
std::vector<fs::path> foldersOf(std::string_view list) {
    std::vector<fs::path> folders;
    while (!list.empty()) {
        const auto colon = std::min(list.find(':'), list.size());
        fs::path folder = fs::path(list.substr(0, colon)).lexically_normal();
        // Without the slash at the end, which would make equal paths differ.
        if (!folder.has_filename())
            folder = folder.parent_path();
        if (folder.is_absolute())
            folders.push_back(std::move(folder));
        list.remove_prefix(std::min(colon + 1, list.size()));
    }
    return folders;
}

template <class Root>
void addOnce(std::vector<Root>& roots, Root root) {
    if (std::ranges::find(roots, root.path, &Root::path) == roots.end())
        roots.push_back(std::move(root));
}

template <std::size_t size>
RootFamily familyByName(const std::array<NamedFamily, size>& families, const fs::path& folder) {
    for (const auto& [end, family] : families)
        if (folder.native().ends_with(end))
            return family;
    return RootFamily::any;
}

/// The root whose path, with links resolved, is `canonical`; null if there is none.
template <class Root>
const Root* standardRoot(const std::vector<Root>& roots, const fs::path& canonical,
                         const Places& places) {
    const auto found = std::ranges::find_if(
        roots, [&](const Root& root) { return places.machine.canonical(root.path) == canonical; });
    return found == roots.end() ? nullptr : &*found;
}

bool isSame(const fs::path& folder, const fs::path& other, const Places& places) {
    return places.machine.canonical(folder) == places.machine.canonical(other);
}

} // namespace

Places Places::current(const MachineFiles& machine) {
    return {.machine = machine, .home = SystemFacts::homeDirectory()};
}

std::vector<ApplicationRoot> applications(const Places& places) {
    using enum RootFamily;
    std::vector<ApplicationRoot> roots;
    for (const fs::path& folder :
         {dataHome(places) / "applications", fs::path("/usr/local/share/applications"),
          fs::path("/usr/share/applications"), fs::path("/var/lib/snapd/desktop/applications")})
        addOnce(roots, {folder, desktopEntries});
    for (const fs::path& data : foldersOf(variable(places, "XDG_DATA_DIRS", "")))
        if (!data.native().ends_with(linksToFlatpaks))
            addOnce(roots, {data / "applications", desktopEntries});
    addOnce(roots, {dataHome(places) / "flatpak/app", flatpaks});
    addOnce(roots, {"/var/lib/flatpak/app", flatpaks});
    addOnce(roots, {places.home / "Applications", ownApplications});
    addOnce(roots, {places.home / ".local/bin", ownApplications});
    return roots;
}

std::vector<BackgroundRoot> agents(const Places& places) {
    using enum RootFamily;
    std::vector<BackgroundRoot> roots;
    addOnce(roots, {ownAutostart(places), Kind::agent, autostart});
    for (const fs::path& configuration : foldersOf(variable(places, "XDG_CONFIG_DIRS", "/etc/xdg")))
        addOnce(roots, {configuration / "autostart", Kind::agent, autostart});
    for (const fs::path& folder :
         {configurationHome(places) / "systemd/user", fs::path("/etc/systemd/user"),
          dataHome(places) / "systemd/user", fs::path("/usr/local/lib/systemd/user"),
          fs::path("/usr/lib/systemd/user")})
        addOnce(roots, {folder, Kind::agent, userUnits});
    return roots;
}

std::vector<BackgroundRoot> daemons(const Places&) {
    using enum RootFamily;
    return {
        {"/etc/systemd/system", Kind::daemon, systemUnits},
        {"/usr/local/lib/systemd/system", Kind::daemon, systemUnits},
        {"/usr/lib/systemd/system", Kind::daemon, systemUnits},
        // On most machines /lib is a link, and this is the same folder.
        {"/lib/systemd/system", Kind::daemon, systemUnits},
        {"/etc/cron.d", Kind::daemon, cronTables},
        {"/etc/cron.hourly", Kind::daemon, cronScripts},
        {"/etc/cron.daily", Kind::daemon, cronScripts},
        {"/etc/cron.weekly", Kind::daemon, cronScripts},
        {"/etc/cron.monthly", Kind::daemon, cronScripts},
    };
}

fs::path folderOfApplications(const Places&) {
    return "/usr/share/applications";
}

fs::path folderOfAgents(const Places& places) {
    std::error_code unknown;
    auto own = ownAutostart(places);
    const auto found = places.machine.outside(places.machine.canonical(own));
    return fs::exists(found, unknown) ? own : fs::path(sharedAutostart);
}

fs::path folderOfDaemons(const Places&) {
    return "/etc/systemd/system";
}

ApplicationRoot applicationRoot(const fs::path& folder, const Places& places) {
    const auto all = applications(places);
    const auto* standard = standardRoot(all, places.machine.canonical(folder), places);
    return {folder, standard ? standard->family : familyByName(applicationFamilies, folder)};
}

BackgroundRoot backgroundRoot(const fs::path& folder, Kind kind, const Places& places) {
    auto all = agents(places);
    std::ranges::move(daemons(places), std::back_inserter(all));
    const auto* standard = standardRoot(all, places.machine.canonical(folder), places);
    return {folder, kind, standard ? standard->family : familyByName(backgroundFamilies, folder)};
}

bool representsApplications(const fs::path& folder, const Places& places) {
    return isSame(folder, folderOfApplications(places), places);
}

bool representsBackground(const fs::path& folder, Kind kind, const Places& places) {
    if (kind == Kind::daemon)
        return isSame(folder, folderOfDaemons(places), places);
    return isSame(folder, ownAutostart(places), places) || isSame(folder, sharedAutostart, places);
}

std::vector<ApplicationRoot> applicationsFor(const fs::path& folder, const Places& places) {
    if (representsApplications(folder, places))
        return applications(places);
    return {applicationRoot(folder, places)};
}

std::vector<BackgroundRoot> backgroundFor(const fs::path& folder, Kind kind, const Places& places) {
    if (representsBackground(folder, kind, places))
        return kind == Kind::agent ? agents(places) : daemons(places);
    return {backgroundRoot(folder, kind, places)};
}

} // namespace tidemark::StandardRoots
