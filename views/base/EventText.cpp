#include "views/base/EventText.h"

#include "core/presentation/EventParts.h"
#include "views/base/ShownText.h"

namespace tidemark::eventText {

namespace {

QString translated(const eventParts::Parts& parts, QString (*wordsShown)(std::string_view)) {
    QString text;
    for (const auto& part : parts)
        text += part.kind == eventParts::Part::Kind::words ? wordsShown(part.text)
                                                           : QString::fromStdString(part.text);
    return text;
}

} // namespace

QString title(const Event& event) {
    return translated(eventParts::title(event), shownEventTitle);
}

QString subtitle(const Event& event) {
    return translated(eventParts::subtitle(event), shownPart);
}

} // namespace tidemark::eventText
