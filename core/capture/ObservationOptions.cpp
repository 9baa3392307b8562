#include "core/capture/ObservationOptions.h"

#include "core/system/SystemFacts.h"

namespace tidemark {

namespace {

std::vector<std::filesystem::path> standardApplicationRoots() {
    return {"/Applications", SystemFacts::homeDirectory() / "Applications"};
}

std::vector<BackgroundRoot> standardBackgroundRoots() {
    using enum BackgroundItem::Kind;
    return {{SystemFacts::homeDirectory() / "Library/LaunchAgents", agent},
            {"/Library/LaunchAgents", agent},
            {"/Library/LaunchDaemons", daemon}};
}

} // namespace

ObservationOptions::ObservationOptions(
    std::optional<std::vector<std::filesystem::path>> applications,
    std::optional<std::vector<BackgroundRoot>> background,
    std::vector<std::filesystem::path> storage)
    : applicationRoots(applications ? std::move(*applications) : standardApplicationRoots()),
      backgroundRoots(background ? std::move(*background) : standardBackgroundRoots()),
      storageRoots(std::move(storage)) {}

} // namespace tidemark
