#include "core/capture/ObservationOptions.h"

#include "core/capture/StandardRoots.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

namespace {

std::vector<BackgroundRoot> standardBackgroundRoots(const StandardRoots::Places& places) {
    auto roots = StandardRoots::agents(places);
    std::ranges::move(StandardRoots::daemons(places), std::back_inserter(roots));
    return roots;
}

} // namespace

ObservationOptions::ObservationOptions(std::optional<std::vector<ApplicationRoot>> applications,
                                       std::optional<std::vector<BackgroundRoot>> background,
                                       std::vector<std::filesystem::path> storage,
                                       MachineFiles observed)
    : storageRoots(std::move(storage)), machine(std::move(observed)) {
    const auto places = StandardRoots::Places::current(machine);
    applicationRoots =
        applications ? *std::move(applications) : StandardRoots::applications(places);
    backgroundRoots = background ? *std::move(background) : standardBackgroundRoots(places);
}

} // namespace tidemark
