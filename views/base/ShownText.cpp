#include "views/base/ShownText.h"

#include <QCoreApplication>

namespace tidemark {

QString shownText(std::string_view text) {
    if (text.empty())
        return {};
    const QByteArray source(text.data(), static_cast<qsizetype>(text.size()));
    return QCoreApplication::translate("core", source.constData());
}

QString isolated(const QString& text) {
    return text.isEmpty() ? text : QChar(0x2068) + text + QChar(0x2069);
}

} // namespace tidemark
