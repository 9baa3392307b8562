#pragma once

#include <QString>
#include <string_view>

namespace tidemark {

struct Event;

/// The texts of an event in the language of the user. The names in them stay as they are: of files,
/// programs, clips, volumes, networks and devices.
namespace eventText {

/// `title` is the title of the event in the words of this system.
QString title(const Event& event, std::string_view title);

/// `subtitle` is its second line, likewise.
QString subtitle(const Event& event, std::string_view subtitle);

} // namespace eventText

} // namespace tidemark
