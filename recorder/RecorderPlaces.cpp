#include "recorder/RecorderPlaces.h"

#include "app/control/ControlProtocol.h"
#include "core/system/UserFolders.h"

namespace tidemark {

RecorderPlaces RecorderPlaces::current() {
    RecorderPlaces places;
    places.files = DataFiles::below(UserFolders::data());
    places.settings = UserFolders::configuration() / DataFiles::folderName / "settings.json";
    places.sockets = controlProtocol::socketPaths(places.files.directory, UserFolders::runtime());
    return places;
}

} // namespace tidemark
