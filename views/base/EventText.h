#pragma once

#include <QString>

namespace tidemark {

struct Event;

/// The texts of an event (`eventParts`) with their words in the language of the user.
namespace eventText {

QString title(const Event& event);
/// The second line.
QString subtitle(const Event& event);

} // namespace eventText

} // namespace tidemark
