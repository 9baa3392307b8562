#include "views/base/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace tidemark {

void loadTranslations(QCoreApplication& application) {
    const auto load = [&](const QString& name, const QString& folder) {
        auto* translator = new QTranslator(&application);
        if (translator->load(QLocale(), name, QStringLiteral("_"), folder))
            QCoreApplication::installTranslator(translator);
    };
    load(QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    load(QStringLiteral("tidemark"), QStringLiteral(":/translations"));
}

} // namespace tidemark
