#include "app/settings/SettingsPage.h"
#include "core/presentation/MenuContent.h"
#include "core/presentation/Toolbar.h"
#include "tests/app/support/MemoryPreferences.h"
#include "views/translations/CorePatterns.h"
#include "views/translations/CoreTexts.h"

#include <QCoreApplication>
#include <QFile>
#include <QTranslator>
#include <QXmlStreamReader>
#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

/// The fixed texts of what windows show most.
std::vector<std::string> shownTexts() {
    std::vector<std::string> texts;
    const test::MemoryPreferences preferences;
    const SettingSources sources{{}};
    for (const auto& section : settingsPage({.preferences = preferences, .sources = sources})) {
        texts.push_back(section.heading);
        for (const auto& group : section.groups) {
            texts.push_back(group.heading);
            for (const auto& row : group.rows) {
                texts.push_back(row.label);
                for (const auto& option : row.options)
                    texts.push_back(option.label);
            }
        }
    }
    const std::vector<Shared<Event>> none;
    for (const auto& entry :
         menuContent({.status = "Recording", .timeline = none, .history = none}))
        texts.push_back(entry.label);
    for (const auto& action : toolbarActions({})) {
        texts.push_back(action.label);
        texts.push_back(action.help);
    }
    return texts;
}

/// Put together from parts, so that there is no translation.
bool isComposed(const std::string& text) {
    return text.empty() || text.starts_with("Listing text: ")
           || text.starts_with("Next capture due: ");
}

/// The texts of a catalogue, each with whether it is translated.
std::map<std::string, bool> catalogue(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    std::map<std::string, bool> texts;
    std::string source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText().toStdString();
        } else if (xml.name() == QLatin1String("translation")) {
            const bool isFinished = !xml.attributes().hasAttribute(QStringLiteral("type"));
            texts[source] = isFinished && !xml.readElementText().isEmpty();
        }
    }
    return texts;
}

/// A language in which each text of the core begins with a mark.
class MarkingTranslator final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        return u'*' + QString::fromUtf8(source);
    }
};

} // namespace

TEST(Translations, KeepTheNamesInSentencesThatAreComposed) {
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(translatedByPattern("Pen Grew in Size").value_or("-"), "*Pen Grew in Size");
    EXPECT_EQ(translatedByPattern("Version Updated Updated"), "*Version Updated Updated");
    EXPECT_EQ(translatedByPattern(" Grew in Size"), std::nullopt) << "without a name";
    EXPECT_EQ(translatedByPattern("2 GB less free; 1 GB of it in folders you monitor."),
              "*2 GB less free; 1 GB of it in folders you monitor.");
    EXPECT_EQ(translatedByPattern("Nothing was observed for 3 days, in 2 gaps."),
              "*Nothing was observed for *3 days, in 2 gaps.");
    EXPECT_EQ(translatedByPattern("Snapshot: %2 days"), "*Snapshot: %2 days");
    EXPECT_EQ(translatedByPattern("Something else"), std::nullopt);
    QCoreApplication::removeTranslator(&translator);
}

TEST(Translations, HaveEveryText) {
    const auto texts =
        catalogue(QStringLiteral(TIDEMARK_ROOT "/views/translations/tidemark_de.ts"));
    for (const auto& [source, isTranslated] : texts)
        EXPECT_TRUE(isTranslated) << source;
    for (const auto& all : {coreTexts(), inspectorTexts(), growthTexts(), corePatterns(),
                            growthPatterns(), lengthPatterns()})
        for (const char* text : all)
            EXPECT_TRUE(texts.contains(text)) << text << " (make translations)";
    std::set<std::string> known(coreTexts().begin(), coreTexts().end());
    known.insert(inspectorTexts().begin(), inspectorTexts().end());
    for (const auto& text : shownTexts())
        EXPECT_TRUE(isComposed(text) || known.contains(text)) << text << " (CoreTexts.cpp)";
}
