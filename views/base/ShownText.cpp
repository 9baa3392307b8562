#include "views/base/ShownText.h"

#include "core/presentation/SystemWords.h"
#include "core/records/FolderSize.h"
#include "core/system/TrashFolder.h"
#include "views/translations/CorePatterns.h"

#include <QCoreApplication>
#include <QTextDocument>

namespace tidemark {

namespace {

/// A fixed text in the language of the user; absent if the catalogue has no other text for it.
std::optional<QString> translatedWhole(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    const std::string source(text);
    auto shown = QCoreApplication::translate("core", source.c_str());
    return shown == QString::fromUtf8(text) ? std::nullopt : std::optional(std::move(shown));
}

/// A name followed by a size or a change of it, such as "Projects +1.2 GB": the name as it is, the
/// size in the language of the user. Nothing for any other text.
std::optional<QString> shownNameAndSize(std::string_view part) {
    for (const std::string_view sign : {" +", " −", " ≥ "})
        if (const auto place = part.rfind(sign); place != part.npos && place > 0)
            if (const auto size = translatedQuantity(part.substr(place + 1))) {
                const auto name = part.substr(0, place);
                const bool isWord = name == FolderSize::filesInFolder;
                return (isWord ? shownText(name) : QString::fromUtf8(name)) + u' ' + *size;
            }
    return std::nullopt;
}

} // namespace

QString shownText(std::string_view text) {
    if (auto whole = translatedWhole(text))
        return *std::move(whole);
    if (auto composed = translatedByPattern(text))
        return *std::move(composed);
    return translatedQuantity(text).value_or(QString::fromUtf8(text));
}

QString shownEventTitle(std::string_view title) {
    if (auto whole = translatedWhole(title))
        return *std::move(whole);
    return translatedTitle(title).value_or(QString::fromUtf8(title));
}

QString wordsHere(std::string_view text) {
    return shownText(systemWords::shown(text));
}

QString shownPart(std::string_view part) {
    // Fixed texts come first, since "Version not recorded" is not the pattern "Version %1".
    if (auto whole = translatedWhole(part))
        return *std::move(whole);
    if (const auto shown = translatedPart(part))
        return *shown;
    return shownNameAndSize(part).value_or(wordsHere(part));
}

QString shownParts(std::string_view text, std::string_view separator) {
    QString shown;
    while (true) {
        const auto end = text.find(separator);
        shown += shownPart(text.substr(0, end));
        if (end == text.npos)
            return shown;
        shown += QString::fromUtf8(separator);
        text.remove_prefix(end + separator.size());
    }
}

QString spokenText(std::string_view sentence, std::string_view name, const QString& shownName) {
    if (!sentence.starts_with(name))
        return shownParts(sentence, ", ");
    return shownName + shownParts(sentence.substr(name.size()), ", ");
}

QString shownFolderName(std::string_view path, std::string_view name) {
    // The row of the files of a folder that are counted together has a path with a NUL.
    const bool isWord = path.empty() || path.contains('\0') || TrashFolder::is(path);
    return isWord ? wordsHere(name) : QString::fromUtf8(name);
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

QString shortened(const QString& text, qsizetype most) {
    if (text.size() <= most)
        return text;
    const bool isWithinPair = most > 0 && text[most - 1].isHighSurrogate();
    return text.left(isWithinPair ? most - 1 : most) + QStringLiteral("…");
}

QString asPlainText(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace tidemark
