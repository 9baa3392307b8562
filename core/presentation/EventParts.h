#pragma once

#include "core/records/Event.h"

#include <string>
#include <vector>

namespace tidemark {

/// The title and the second line of an event, each in the words of this system and on one line, as
/// a list of parts. A window translates the words in it and leaves the names.
namespace eventParts {

struct Part {
    enum class Kind {
        /// A fixed text such as "Bluetooth", a size, or a fixed text around a size or a name, such
        /// as "84 GB remaining" or "Lantern Installed".
        words,
        /// The name of a file, program, clip, volume, network or service, a version, or what stands
        /// between two parts, such as " · ".
        literal,
    };

    Kind kind = Kind::words;
    std::string text;

    bool operator==(const Part&) const = default;
};

using Parts = std::vector<Part>;

Parts title(const Event& event);
/// Empty for an event without a second line.
Parts subtitle(const Event& event);

/// The parts one after the other.
std::string joined(const Parts& parts);

} // namespace eventParts

} // namespace tidemark
