#include "core/base/KeyFile.h"

#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Unlike for `tidemark::trimmed`, the other spaces of Unicode are part of a value here.
constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\f'
           || character == '\v';
}

/// Without leading blanks: the indentation of a continued line is no part of the value.
std::string_view unindented(std::string_view line) {
    while (!line.empty() && isBlank(line.front()))
        line.remove_prefix(1);
    return line;
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return unindented(text);
}

/// Removes the first line and its line break from `rest` and returns the line.
std::string_view nextLine(std::string_view& rest) {
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

bool isComment(std::string_view line) {
    line = unindented(line);
    return line.starts_with('#') || line.starts_with(';');
}

/// Whether the line ends with an odd number of backslashes, so that the last one is not escaped.
bool isContinued(std::string_view line) {
    const auto last = line.find_last_not_of('\\');
    const std::size_t count = line.size() - (last == std::string_view::npos ? 0 : last + 1);
    return count % 2 == 1;
}

/// The text with each continued line and the lines that continue it joined into one. Comments
/// between them are skipped; a backslash at the end of a comment has no meaning.
std::string joinedLines(std::string_view bytes) {
    std::string joined;
    joined.reserve(bytes.size());
    bool isOpen = false;
    while (!bytes.empty()) {
        std::string_view line = nextLine(bytes);
        if (isComment(line))
            continue;
        line = unindented(line);
        if (isOpen)
            joined.back() = ' ';
        joined.append(line);
        // The backslash at the end becomes the space before the next line.
        isOpen = isContinued(line);
        if (!isOpen)
            joined += '\n';
    }
    if (isOpen)
        joined.back() = '\n';
    return joined;
}

char escapedCharacter(char letter) {
    switch (letter) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    case '\\':
        return '\\';
    default:
        return '\0';
    }
}

} // namespace

std::string KeyFile::Entry::text() const {
    return textFromBytes(bytes);
}

KeyFile::KeyFile(std::string bytes)
    : content(std::make_unique<const std::string>(std::move(bytes))) {}

std::expected<KeyFile, KeyFile::Failure> KeyFile::parse(std::string bytes,
                                                        Continuation continuation) {
    if (bytes.size() > maximumSize)
        return std::unexpected(Failure::tooLarge);
    if (bytes.contains('\0'))
        return std::unexpected(Failure::malformed);
    KeyFile file(continuation == Continuation::backslash ? joinedLines(bytes) : std::move(bytes));
    std::string_view rest = *file.content;
    if (rest.starts_with(byteOrderMark))
        rest.remove_prefix(byteOrderMark.size());
    while (!rest.empty())
        if (const auto read = file.readLine(withoutBlanks(nextLine(rest))); !read)
            return std::unexpected(read.error());
    return file;
}

std::expected<void, KeyFile::Failure> KeyFile::readLine(std::string_view line) {
    if (line.empty() || isComment(line))
        return {};
    if (line.starts_with('[')) {
        if (!line.ends_with(']') || !isValidUtf8(line))
            return std::unexpected(Failure::malformed);
        groups.push_back(line.substr(1, line.size() - 2));
        return {};
    }
    const auto sign = line.find('=');
    if (groups.empty() || sign == std::string_view::npos || sign == 0)
        return {};
    all.push_back(
        {groups.back(), withoutBlanks(line.substr(0, sign)), withoutBlanks(line.substr(sign + 1))});
    return {};
}

bool KeyFile::hasGroup(std::string_view group) const {
    return std::ranges::find(groups, group) != groups.end();
}

std::optional<std::string> KeyFile::value(std::string_view group, std::string_view key) const {
    const auto found = std::find_if(all.rbegin(), all.rend(), [&](const Entry& entry) {
        return entry.key == key && entry.group == group;
    });
    return found == all.rend() ? std::nullopt : std::optional(found->text());
}

std::vector<std::string> KeyFile::values(std::string_view group, std::string_view key) const {
    std::vector<std::string> texts;
    for (const auto& entry : all)
        if (entry.key == key && entry.group == group)
            texts.push_back(entry.text());
    return texts;
}

std::string KeyFile::unescaped(std::string_view value) {
    std::string plain;
    plain.reserve(value.size());
    for (std::size_t place = 0; place < value.size(); ++place) {
        const char replaced = value[place] == '\\' && place + 1 < value.size()
                                  ? escapedCharacter(value[place + 1])
                                  : '\0';
        plain += replaced ? replaced : value[place];
        place += replaced ? 1 : 0;
    }
    return plain;
}

} // namespace tidemark
