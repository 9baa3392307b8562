#include "recorder/RecorderPlaces.h"

#include "app/control/ControlProtocol.h"
#include "core/system/UserFolders.h"

namespace tidemark {

RecorderPlaces RecorderPlaces::current() {
    RecorderPlaces places;
    places.files = DataFiles::of(AppDataLocation::unbundled, UserFolders::data());
    places.settings = UserFolders::configuration()
                      / AppDataLocation::directoryName(AppDataLocation::unbundled)
                      / "settings.json";
    places.sockets = control::socketPaths(places.files.directory, UserFolders::runtime());
    return places;
}

} // namespace tidemark
