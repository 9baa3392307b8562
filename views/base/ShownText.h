#pragma once

#include <QString>
#include <optional>
#include <string_view>

namespace tidemark {

/// A text of the core as a window shows it: in the language of the user where a translation has it
/// or one of the patterns, or it is a size or a length of time; else as it is. Not for names.
QString shownText(std::string_view text);

/// A fixed text of the core in the words of this system (`systemWords::shown`) and the language of
/// the user.
QString wordsHere(std::string_view text);

/// A name followed by a size or a change of it, such as "Projects +1.2 GB": the name as it is, the
/// size in the language of the user. Nothing for any other text.
std::optional<QString> shownNameAndSize(std::string_view part);

/// A part of a text that is put together of several: by one of `partPatterns`, as a name followed
/// by a change of its size, else as `wordsHere` shows it.
QString shownPart(std::string_view part);

/// A text of the core that is put together of parts with `separator` between them.
QString shownParts(std::string_view text, std::string_view separator);

/// A sentence for a screen reader, whose parts have commas between them. It begins with `name`, in
/// place of which it says `shownName`.
QString spokenText(std::string_view sentence, std::string_view name, const QString& shownName);

/// The name of the folder at `path`, as it is. That of a Trash is a word, and so is that of what
/// has no path, such as free space.
QString shownFolderName(std::string_view path, std::string_view name);

/// A text within FIRST STRONG ISOLATE and POP DIRECTIONAL ISOLATE, so that "1 → 2" does not read
/// "2 → 1" in a window that is laid out from right to left, and without the direction controls that
/// it contains. To be done last, after eliding.
QString isolated(const QString& text);

} // namespace tidemark
