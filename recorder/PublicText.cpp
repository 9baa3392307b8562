#include "recorder/PublicText.h"

#include "core/base/Text.h"
#include "recorder/OwnDocuments.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <functional>

#include <pwd.h>
#include <unistd.h>

namespace tidemark::publicText {

namespace {

constexpr std::string_view somePath = "[path]";
constexpr std::string_view someName = "[name]";

struct Quotes {
    std::string_view opening;
    std::string_view closing;
};
constexpr std::array quotes{Quotes{"\"", "\""}, Quotes{"“", "”"}};

/// The words after the path in sentences about a file. Those that a path hardly ever contains come
/// first.
constexpr auto afterPath = std::to_array<std::string_view>(
    {" could not ", " can’t be ", " can't be ", " is ", " was ", " has ", " lies "});

/// The marks between which a path or a name stands.
constexpr std::string_view boundaries = " \t\n(\"“”=,;";

/// Replaces everything between the first and the last quotation mark of a kind, since a name can
/// have quotation marks in it.
void hideQuoted(std::string& text) {
    for (const auto& [opening, closing] : quotes) {
        const auto first = text.find(opening);
        const auto last = text.rfind(closing);
        if (first == text.npos || last == text.npos || last < first + opening.size())
            continue;
        const auto start = first + opening.size();
        text.replace(start, last - start, someName);
    }
}

/// The end of the path at the start of `rest`.
std::size_t endOfPath(std::string_view rest) {
    const auto lastSlash = rest.rfind('/');
    for (const auto words : afterPath)
        if (const auto place = rest.rfind(words); place != rest.npos && place > lastSlash)
            return place;
    return rest.size();
}

std::string_view shownFor(std::string_view path) {
    const auto name = lastPathComponent(path);
    const auto isNamed = [&](const auto& document) { return document.name == name; };
    if (std::ranges::any_of(ownDocuments::ofData, isNamed)
        || std::ranges::any_of(ownDocuments::ofSettings, isNamed))
        return name;
    return somePath;
}

void hidePath(std::string& text) {
    const auto slash = text.find('/');
    if (slash == text.npos)
        return;
    const auto boundary = text.find_last_of(boundaries, slash);
    const auto start = boundary == text.npos ? 0 : boundary + 1;
    const auto size = endOfPath(std::string_view(text).substr(start));
    const std::string shown(shownFor(std::string_view(text).substr(start, size)));
    const bool isEnd = start + size == text.size();
    text.replace(start, size, shown + (isEnd ? "." : ""));
}

bool isWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'
           || static_cast<unsigned char>(c) >= 0x80;
}

void hideWord(std::string& text, std::string_view word) {
    for (std::size_t place = 0; (place = text.find(word, place)) != text.npos;) {
        const auto end = place + word.size();
        const bool isWhole = (place == 0 || !isWordCharacter(text[place - 1]))
                             && (end == text.size() || !isWordCharacter(text[end]));
        if (isWhole)
            text.replace(place, word.size(), someName);
        place += isWhole ? someName.size() : 1;
    }
}

} // namespace

std::vector<std::string> privateNames() {
    std::vector<std::string> names;
    const auto add = [&](const char* name) {
        if (name && *name != '\0' && std::ranges::find(names, name) == names.end())
            names.emplace_back(name);
    };
    if (const passwd* user = ::getpwuid(::geteuid())) {
        add(user->pw_name);
        // The full name comes first, then other fields after commas.
        const std::string details(user->pw_gecos ? user->pw_gecos : "");
        add(details.substr(0, details.find(',')).c_str());
    }
    add(std::getenv("USER"));
    add(std::getenv("LOGNAME"));
    std::array<char, 256> host{};
    if (::gethostname(host.data(), host.size() - 1) == 0)
        add(host.data());
    if (char* domain = std::strchr(host.data(), '.')) {
        *domain = '\0';
        add(host.data());
    }
    return names;
}

std::string of(std::string_view sentence, const std::vector<std::string>& names) {
    std::string text(sentence);
    hideQuoted(text);
    hidePath(text);
    // A short name may be a part of a longer one, as in a host called after its user.
    std::vector<std::string_view> longestFirst(names.begin(), names.end());
    std::ranges::stable_sort(longestFirst, std::greater(), &std::string_view::size);
    for (const auto name : longestFirst)
        hideWord(text, name);
    return text;
}

} // namespace tidemark::publicText
