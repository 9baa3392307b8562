#pragma once

#include <QString>
#include <string_view>

namespace tidemark {

/// A text of the core as a window shows it: in the language of the user where a translation has it
/// or one of `corePatterns`, else as it is.
QString shownText(std::string_view text);

/// A fixed text of the core in the words of this system (`systemWords::shown`) and the language of
/// the user.
QString wordsHere(std::string_view text);

/// A text within FIRST STRONG ISOLATE and POP DIRECTIONAL ISOLATE, so that "1 → 2" does not read
/// "2 → 1" in a window that is laid out from right to left, and without the direction controls that
/// it contains. To be done last, after eliding.
QString isolated(const QString& text);

} // namespace tidemark
