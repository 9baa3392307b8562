#include "core/system/OsRelease.h"

#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

namespace {

std::string unquoted(std::string_view value) {
    const char quote = value.empty() ? '\0' : value.front();
    const bool quoted =
        value.size() >= 2 && (quote == '"' || quote == '\'') && value.back() == quote;
    if (quoted)
        value = value.substr(1, value.size() - 2);
    if (quoted && quote == '\'')
        return std::string(value);
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\' && i + 1 < value.size())
            ++i;
        text += value[i];
    }
    return text;
}

} // namespace

std::map<std::string, std::string> parseOsRelease(std::string_view text) {
    std::map<std::string, std::string> values;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && !line.starts_with('#'))
            values[std::string(line.substr(0, equals))] =
                textFromBytes(unquoted(line.substr(equals + 1)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return values;
}

std::optional<std::string> versionOf(const std::map<std::string, std::string>& osRelease) {
    const auto value = [&](const char* key) -> std::optional<std::string> {
        const auto found = osRelease.find(key);
        return found == osRelease.end() || found->second.empty() ? std::nullopt
                                                                 : std::optional(found->second);
    };
    const auto name = value("NAME");
    const auto version = value("VERSION_ID");
    if (name && version)
        return *name + " " + *version;
    return value("PRETTY_NAME") ? value("PRETTY_NAME") : name;
}

} // namespace tidemark
