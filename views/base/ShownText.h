#pragma once

#include <QString>
#include <string_view>

namespace tidemark {

/// A text of the core as a window shows it. It is translated if the catalogue has it, if it matches
/// one of the patterns, or if it is a size or a length of time; any other text stays as it is. Not
/// for names.
QString shownText(std::string_view text);

/// A text of the core in the words of this system (`systemWords::shown`), translated by
/// `shownText`.
QString wordsHere(std::string_view text);

/// The words in the title of an event (`eventParts::title`), in the language of the user. A name
/// between the words stays as it is, even if it looks like a text that has a translation.
QString shownEventTitle(std::string_view title);

/// A part of a text that is put together of several. A fixed text and one that matches one of
/// `partPatterns` are translated. Of a name followed by a size, such as "Projects +1.2 GB", only
/// the size is translated; "Files in folder" is no name. Any other part is shown by `wordsHere`.
QString shownPart(std::string_view part);

/// A text of the core that is put together of parts with `separator` between them.
QString shownParts(std::string_view text, std::string_view separator);

/// A sentence for a screen reader, of which each part between commas is shown by `shownPart`. If it
/// begins with `name`, `shownName` takes its place.
QString spokenText(std::string_view sentence, std::string_view name, const QString& shownName);

/// The name of a row of a list of folders. The name of the folder at `path` stays as it is. The
/// name of a Trash, of files that are counted together, and of what has no path, such as free
/// space, is a text of the core, shown by `wordsHere`.
QString shownFolderName(std::string_view path, std::string_view name);

/// A text within FIRST STRONG ISOLATE and POP DIRECTIONAL ISOLATE, so that "1 → 2" does not read "2
/// → 1" in a window that is laid out from right to left. Controls for embeddings, overrides and
/// isolates in the text are removed. To be done last, after eliding.
QString isolated(const QString& text);

/// The first `most` UTF-16 code units of a text with "…" after them, one less where a character
/// would be cut in two; a text that is not longer stays as it is.
QString shortened(const QString& text, qsizetype most);

/// A text for a tool tip or a message box, which would take a text with a file name such as "<b>"
/// for HTML. Such a text is returned as HTML in which these characters are escaped.
QString asPlainText(const QString& text);

} // namespace tidemark
