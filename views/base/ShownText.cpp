#include "views/base/ShownText.h"

#include "core/presentation/SystemWords.h"
#include "views/translations/CorePatterns.h"

#include <QCoreApplication>

namespace tidemark {

QString shownText(std::string_view text) {
    if (text.empty())
        return {};
    const QByteArray source(text.data(), static_cast<qsizetype>(text.size()));
    const QString shown = QCoreApplication::translate("core", source.constData());
    return shown != QString::fromUtf8(source) ? shown : translatedByPattern(text).value_or(shown);
}

QString wordsHere(std::string_view text) {
    return shownText(systemWords::shown(text));
}

QString isolated(const QString& text) {
    if (text.isEmpty())
        return text;
    QString inside = text;
    // A text with controls of its own could end the isolate, or show a name backwards.
    inside.removeIf([](QChar c) {
        return (c >= QChar(0x202A) && c <= QChar(0x202E))
               || (c >= QChar(0x2066) && c <= QChar(0x2069));
    });
    return QChar(0x2068) + inside + QChar(0x2069);
}

} // namespace tidemark
