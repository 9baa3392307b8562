#include "core/capture/CommandText.h"

#include <algorithm>

namespace tidemark::CommandText {

namespace {

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Takes the characters of a text one after the other, and determines what each means by the rules
/// for quotes and backslashes.
class Scanner {
public:
    explicit Scanner(Quoting used) : quoting(used) {}

    enum class Meaning {
        /// Ends a word.
        blank,
        /// A quote or backslash that is not part of the value.
        mark,
        content,
    };

    Meaning next(char character) {
        if (isEscaped) {
            isEscaped = false;
            return Meaning::content;
        }
        if (character == '\\' && backslashCounts()) {
            isEscaped = true;
            return Meaning::mark;
        }
        if (quote != 0) {
            if (character != quote)
                return Meaning::content;
            quote = 0;
            return Meaning::mark;
        }
        if (isQuote(character)) {
            quote = character;
            return Meaning::mark;
        }
        return isBlank(character) ? Meaning::blank : Meaning::content;
    }

private:
    bool isQuote(char character) const {
        return (quoting != Quoting::none && character == '"')
               || (quoting == Quoting::unit && character == '\'');
    }
    bool backslashCounts() const {
        return quoting == Quoting::unit || (quoting == Quoting::desktopEntry && quote != 0);
    }

    Quoting quoting;
    char quote = 0;
    bool isEscaped = false;
};

using Meaning = Scanner::Meaning;

} // namespace

std::optional<std::string> firstWord(std::string_view command, Quoting quoting) {
    Scanner scanner(quoting);
    std::string word;
    for (const char character : withoutBlanks(command)) {
        const auto meaning = scanner.next(character);
        if (meaning == Meaning::blank)
            break;
        if (meaning == Meaning::content)
            word += character;
    }
    return word.empty() ? std::nullopt : std::optional(std::move(word));
}

std::string_view afterFirstWord(std::string_view command, Quoting quoting) {
    Scanner scanner(quoting);
    const std::string_view text = withoutBlanks(command);
    const auto blank = std::ranges::find_if(
        text, [&](char character) { return scanner.next(character) == Meaning::blank; });
    return withoutBlanks(text.substr(static_cast<std::size_t>(blank - text.begin())));
}

std::string withSingleBlanks(std::string_view text, Quoting quoting) {
    Scanner scanner(quoting);
    std::string result;
    bool wasBlank = false;
    for (const char character : withoutBlanks(text)) {
        const bool isSpace = scanner.next(character) == Meaning::blank;
        if (!isSpace)
            result += character;
        else if (!wasBlank)
            result += ' ';
        wasBlank = isSpace;
    }
    return result;
}

} // namespace tidemark::CommandText
