#include "app/settings/SettingsPage.h"
#include "core/growth/GrowthText.h"
#include "core/growth/StorageChartText.h"
#include "core/presentation/FolderMap.h"
#include "core/presentation/MenuContent.h"
#include "core/presentation/Sidebar.h"
#include "core/presentation/Toolbar.h"
#include "tests/app/support/MemoryPreferences.h"
#include "views/base/EventText.h"
#include "views/base/ShownText.h"
#include "views/folders/MonitoredFolderRow.h"
#include "views/translations/CorePatterns.h"
#include "views/translations/CoreTexts.h"
#include "views/workspace/InspectionSectionView.h"

#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>
#include <algorithm>
#include <map>
#include <ranges>
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

/// The texts of the German catalogue with their translations; those that are not finished are
/// empty.
std::map<std::string, QString> catalogue() {
    const QString path = QStringLiteral(TIDEMARK_ROOT "/views/translations/tidemark_de.ts");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    std::map<std::string, QString> texts;
    std::string source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText().toStdString();
        } else if (xml.name() == QLatin1String("translation")) {
            const bool isFinished = !xml.attributes().hasAttribute(QStringLiteral("type"));
            texts[source] = isFinished ? xml.readElementText() : QString();
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

/// The German catalogue, with a mark before each text that it has.
class CatalogueTranslator final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        return texts.contains(source) ? u'*' + QString::fromUtf8(source) : QString();
    }

private:
    const std::map<std::string, QString> texts = catalogue();
};

/// Shows texts in German while it exists.
class InGerman final : public QTranslator {
public:
    InGerman() { QCoreApplication::installTranslator(this); }
    ~InGerman() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        const auto found = texts.find(source);
        return found == texts.end() ? QString() : found->second;
    }

private:
    const std::map<std::string, QString> texts = catalogue();
};

/// All that a window has written on it, with a comma after each text.
std::string labelsOf(const QWidget& window) {
    QString all;
    for (const auto* label : window.findChildren<QLabel*>())
        all += label->text() + u',';
    // Removes the isolates around the texts.
    all.removeIf([](QChar c) { return c == QChar(0x2068) || c == QChar(0x2069); });
    return all.toStdString();
}

/// A sentence for a screen reader and the name that it begins with.
struct Sentence {
    std::string text;
    std::string name{};
};

void addGrowth(std::vector<Sentence>& all, GrowthItem item) {
    for (const auto state :
         {GrowthItem::State::changed, GrowthItem::State::appeared, GrowthItem::State::gone}) {
        item.state = state;
        const auto row = growthText::row(item, Calendar("UTC"));
        all.push_back({row.accessibleText, row.name});
        all.push_back({row.change});
        for (const auto line : std::views::split(row.help, '\n') | std::views::drop(1))
            all.push_back({std::string(line.begin(), line.end())});
    }
}

void addTiles(std::vector<Sentence>& all) {
    for (const auto trend : {FolderMap::Trend::grew, FolderMap::Trend::shrank,
                             FolderMap::Trend::same, FolderMap::Trend::unknown}) {
        const FolderMap::Tile tile{
            .id = "/pens", .name = "pens", .bytes = 3'000, .change = 1'000, .trend = trend};
        all.push_back({accessibleTextOf(tile), "pens"});
    }
}

void addPlaces(std::vector<Sentence>& all) {
    for (const std::size_t count : {1U, 2U}) {
        SidebarState state;
        for (const auto& group : destinationGroups())
            for (const auto place : group.destinations)
                state.counts[place] = count;
        state.systemFilters = {WorkspaceDestination::storage};
        for (const auto& row : sidebarRows(state, {}, Calendar("UTC")))
            all.push_back({row.accessibleText, row.label});
    }
}

std::vector<Sentence> spokenSentences() {
    std::vector<Sentence> all{{"pens, at least 2 MB, before unknown size", "pens"},
                              {"pens, 3 MB, before at least 2 MB, change +1 MB", "pens"},
                              {"pens, 3 MB, before Zero KB", "pens"}};
    addPlaces(all);
    addTiles(all);
    const DatedSize size{.bytes = 3'000, .measuredAt = Date::fromUnix(0)};
    GrowthItem item{.path = "/pens", .name = "pens"};
    addGrowth(all, item);
    item.before = size;
    item.after = {.bytes = 5'000, .measuredAt = size.measuredAt};
    addGrowth(all, item);
    StorageChart chart;
    chart.subject.name = "pens";
    all.push_back({storageChartText::summary(chart, Calendar("UTC")), "pens"});
    chart.points = {{.at = Date::fromUnix(0), .bytes = 1'000}};
    all.push_back({storageChartText::summary(chart, Calendar("UTC")), "pens"});
    for (const char* part : {"Previously 3 items", "Observed empty", "2 GB decrease in free space",
                             "84 GB remaining", "User service", "important", "14:00 – now"})
        all.push_back({part});
    return all;
}

/// Sizes, dates and shares.
bool isMeasure(const QString& part) {
    static const QRegularExpression begin(QStringLiteral("^[+−<]? ?\\*?[0-9]"));
    return part.isEmpty() || begin.match(part).hasMatch();
}

} // namespace

TEST(Translations, CoverWhatAScreenReaderSays) {
    CatalogueTranslator translator;
    QCoreApplication::installTranslator(&translator);
    for (const auto& [text, name] : spokenSentences()) {
        auto parts = spokenText(text, name, QString()).split(QRegularExpression(" · |, "));
        if (!name.empty())
            parts.removeFirst();
        for (const auto& part : parts)
            EXPECT_TRUE(part.startsWith(u'*') || isMeasure(part))
                << part.toStdString() << " of " << text << " (SpokenTexts.cpp)";
    }
    QCoreApplication::removeTranslator(&translator);
}

TEST(Translations, KeepTheNamesInSentencesThatAreComposed) {
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(translatedByPattern("Pen Grew in Size").value_or("-"), "*Pen Grew in Size");
    EXPECT_EQ(translatedByPattern("Version Updated Updated"), "*Version Updated Updated");
    EXPECT_EQ(translatedByPattern(" Grew in Size"), std::nullopt) << "without a name";
    EXPECT_EQ(translatedByPattern("2 GB less free; 1 GB of it in folders you monitor."),
              "**2 GB less free; *1 GB of it in folders you monitor.");
    EXPECT_EQ(translatedByPattern("Nothing was observed for 3 days, in 2 gaps."),
              "*Nothing was observed for *3 days, in 2 gaps.");
    EXPECT_EQ(translatedByPattern("Snapshot: %2 days"), "*Snapshot: %2 days");
    EXPECT_EQ(translatedByPattern("Something else"), std::nullopt);
    QCoreApplication::removeTranslator(&translator);
}

TEST(Translations, WriteSizesAndLengthsOfTimeAsTheLanguageDoes) {
    const InGerman german;
    const struct {
        const char* text;
        const char* shown;
    } cases[] = {
        {"1.2 GB", "1,2 GB"},
        {"+12.25 TB", "+12,25 TB"},
        {"−300 KB", "−300 KB"},
        {"≥ 1.5 MB", "≥ 1,5 MB"},
        {"1 byte", "1 Byte"},
        {"2 hr 5 min", "2 Std. 5 Min."},
        {"Sleep interval: 7 min", "Ruhezeit: 7 Min."},
        {"84.2 GB remaining", "84,2 GB frei"},
        {"Documents +1.5 GB", "Documents +1,5 GB"},
        {"Files in folder +1.5 GB", "Eigene Dateien +1,5 GB"},
        {"Documents ≥ 1.5 GB", "Documents ≥ 1,5 GB"},
        // The names of a snapshot and of a program.
        {"Snapshot: 1.5 GB", "Schnappschuss: 1.5 GB"},
        {"3 days Installed", "3 days installiert"},
    };
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(shownPart(text).toStdString(), shown) << text;
}

TEST(Translations, DoNotApplyToANameThatEqualsATranslatedText) {
    const InGerman german;
    ASSERT_EQ(shownText("Documents"), QStringLiteral("Dokumente"));
    const InspectionSectionView view({.rows = {{"Volume", "Documents", true}},
                                      .changes = {{"Documents", "1.5 GB", "2 GB", {}, true}}});
    EXPECT_EQ(labelsOf(view), "Datenträger,Documents,Vorher,Nachher,Documents,1,5 GB,2 GB,");
    MonitoredFolderRow row;
    FolderManagerPage::Row folder;
    folder.name = "Documents";
    folder.isNamed = true;
    folder.accessibleText = "Documents, not monitored";
    row.present(folder);
    EXPECT_EQ(row.controls()[0]->accessibleName(), QStringLiteral("Documents, nicht überwacht"));
}

TEST(Translations, ReachTheTextsOfAnEventAndNoNameInThem) {
    const InGerman german;
    const auto remembered = [](MemoryRecord::Kind kind) {
        Event event;
        event.memory.emplace(MemoryRecord::make(kind, {}, "Documents", {}, {}, {}, {}));
        return event;
    };
    const auto active = [](SystemActivity activity) {
        Event event;
        event.systemActivity.emplace(std::move(activity));
        return event;
    };
    Event volume;
    VolumeContext named;
    named.name = "Documents";
    volume.volumeContext.emplace(std::move(named));
    Event service;
    service.category = EventCategory::background;
    service.changes.emplace_back(change::BackgroundRemoved{Shared(BackgroundItem{})});
    Event folder;
    folder.changes.emplace_back(change::FolderSizeChanged{});
    Event removed, updated, formula;
    removed.changes.emplace_back(change::ApplicationRemoved{});
    updated.changes.emplace_back(change::ApplicationUpdated{});
    formula.changes.emplace_back(change::MetadataChanged{});
    Event clip = remembered(MemoryRecord::Kind::clipboard);
    auto typed = *clip.memory;
    typed.contentType = "text";
    clip.memory.emplace(std::move(typed));
    using enum MemoryRecord::Kind;
    const struct {
        Event event;
        const char* subtitle;
        const char* shown;
    } cases[] = {
        {clip, "Image · Documents", "Bild · Documents"},
        {folder, "before 2020 +1.5 GB · Files in folder −1.4 GB · Net +100 MB",
         "before 2020 +1,5 GB · Eigene Dateien −1,4 GB · Insgesamt +100 MB"},
        {folder, "Previously 3 items · 1.5 GB · Observed empty",
         "Vorher 3 Objekte · 1,5 GB · leer vorgefunden"},
        {volume, "Documents · 1.5 GB decrease in free space · 84.2 GB remaining",
         "Documents · 1,5 GB weniger freier Platz · 84,2 GB frei"},
        {removed, "Previously Unknown version", "Vorher Version nicht bekannt"},
        {updated, "Unknown version → 1.5 GB", "Version nicht bekannt → 1.5 GB"},
        {formula, "Homebrew · 1.0 → Not present", "Homebrew · 1.0 → Nicht vorhanden"},
        {{}, "Version 1.0", "Version 1.0"},
        {{}, "Version not recorded", "Version nicht aufgezeichnet"},
        {active(SystemActivity::observed(SystemActivity::Kind::thermalChanged, {})),
         "Nominal → Serious", "Normal → Hoch"},
        {service, "User service · Documents", "Dienst des Benutzers · Documents"},
    };
    for (auto [event, subtitle, shown] : cases) {
        event.subtitle = subtitle;
        EXPECT_EQ(eventText::subtitle(event).toStdString(), shown) << subtitle;
    }
    Event file = remembered(fileOpened);
    file.title = "Documents";
    EXPECT_EQ(eventText::title(file), QStringLiteral("Documents"));
    Event application = remembered(appLaunched);
    for (const auto& [title, shown] : {std::pair{"Documents Launched", "Documents gestartet"},
                                       {"Version Control Launched", "Version Control gestartet"},
                                       {"New volume: a Closed", "New volume: a beendet"}}) {
        application.title = title;
        EXPECT_EQ(eventText::title(application).toStdString(), shown);
    }
}

TEST(Translations, SayWhatCouldNotBeDoneAndWhy) {
    const InGerman german;
    EXPECT_EQ(
        shownText("Storage · Work: old: The scan was cancelled. No size comparison was made."),
        QStringLiteral("Speicher · Work: old: Die Messung wurde abgebrochen. Es wurde keine "
                       "Größe verglichen."));
    EXPECT_EQ(
        shownText("Storage · 3 days: The scan was cancelled. No size comparison was made."),
        QStringLiteral("Speicher · 3 days: Die Messung wurde abgebrochen. Es wurde keine Größe "
                       "verglichen."));
    EXPECT_TRUE(
        shownText("Storage · pens: 4 of 5 child folders measured. Completed measurements are "
                  "retained; unfinished work continues on later checks.")
            .startsWith(QStringLiteral("Speicher · pens: 4 von 5 Unterordnern gemessen.")));
    EXPECT_EQ(shownText("History couldn’t be saved. /a could not be written: No space left."),
              QStringLiteral("Der Verlauf konnte nicht gesichert werden. /a konnte nicht "
                             "geschrieben werden: No space left."));
}

TEST(Translations, HaveEveryText) {
    const auto texts = catalogue();
    for (const auto& [source, translation] : texts)
        EXPECT_FALSE(translation.isEmpty()) << source;
    for (const auto& all :
         {coreTexts(), inspectorTexts(), recordTexts(), growthTexts(), spokenTexts(),
          corePatterns(), titlePatterns(), recordPatterns(), failurePatterns(), causePatterns(),
          growthPatterns(), lengthPatterns(), sizePatterns(), partPatterns()})
        for (const char* text : all)
            EXPECT_TRUE(texts.contains(text)) << text << " (make translations)";
    std::set<std::string> known(coreTexts().begin(), coreTexts().end());
    known.insert(inspectorTexts().begin(), inspectorTexts().end());
    for (const auto& text : shownTexts())
        EXPECT_TRUE(isComposed(text) || known.contains(text)) << text << " (CoreTexts.cpp)";
}
