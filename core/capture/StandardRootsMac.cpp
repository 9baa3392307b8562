#include "core/capture/StandardRoots.h"
#include "core/system/SystemFacts.h"

namespace tidemark::StandardRoots {

using Kind = BackgroundItem::Kind;

Places Places::current(const MachineFiles& machine) {
    return {.machine = machine, .home = SystemFacts::homeDirectory()};
}

std::vector<ApplicationRoot> applications(const Places& places) {
    return {ApplicationRoot("/Applications"), ApplicationRoot(places.home / "Applications")};
}

std::vector<BackgroundRoot> agents(const Places& places) {
    return {{places.home / "Library/LaunchAgents", Kind::agent},
            {"/Library/LaunchAgents", Kind::agent}};
}

std::vector<BackgroundRoot> daemons(const Places&) {
    return {{"/Library/LaunchDaemons", Kind::daemon}};
}

std::filesystem::path folderOfApplications(const Places&) {
    return {};
}

std::filesystem::path folderOfAgents(const Places&) {
    return {};
}

std::filesystem::path folderOfDaemons(const Places&) {
    return {};
}

bool representsApplications(const std::filesystem::path&, const Places&) {
    return false;
}

bool representsBackground(const std::filesystem::path&, Kind, const Places&) {
    return false;
}

ApplicationRoot applicationRoot(const std::filesystem::path& folder, const Places&) {
    return {folder};
}

BackgroundRoot backgroundRoot(const std::filesystem::path& folder, Kind kind, const Places&) {
    return {folder, kind};
}

std::vector<ApplicationRoot> applicationsFor(const std::filesystem::path& folder, const Places&) {
    return {ApplicationRoot(folder)};
}

std::vector<BackgroundRoot> backgroundFor(const std::filesystem::path& folder, Kind kind,
                                          const Places&) {
    return {{folder, kind}};
}

} // namespace tidemark::StandardRoots
