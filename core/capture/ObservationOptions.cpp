#include "core/capture/ObservationOptions.h"

#include "core/capture/StandardRoots.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

namespace {

std::vector<BackgroundRoot> standardBackgroundRoots() {
    const auto places = StandardRoots::Places::current();
    auto roots = StandardRoots::agents(places);
    std::ranges::move(StandardRoots::daemons(places), std::back_inserter(roots));
    return roots;
}

} // namespace

ObservationOptions::ObservationOptions(std::optional<std::vector<ApplicationRoot>> applications,
                                       std::optional<std::vector<BackgroundRoot>> background,
                                       std::vector<std::filesystem::path> storage)
    : applicationRoots(applications
                           ? std::move(*applications)
                           : StandardRoots::applications(StandardRoots::Places::current())),
      backgroundRoots(background ? std::move(*background) : standardBackgroundRoots()),
      storageRoots(std::move(storage)) {}

} // namespace tidemark
