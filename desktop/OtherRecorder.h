#pragma once

#include "recorder/RecorderPlaces.h"

#include <string>

namespace tidemark {

/// The program that already records into the data folder, if there is one.
struct OtherRecorder {
    /// True when it has windows: it was asked to bring one forward.
    bool hasWindow = false;
    /// The name of the service as which it ran, to be started again later; empty when it was none.
    std::string service{};

    /// Asks the program over its socket to bring its window forward or, when it has none, to end
    /// and leave the folder. Blocks. Throws `Error` when it does neither.
    static OtherRecorder ask(const RecorderPlaces& places);
};

} // namespace tidemark
