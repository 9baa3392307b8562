#include "core/presentation/SystemWords.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace tidemark::systemWords {

namespace {

constexpr std::string_view hole = "{}";

struct Pattern {
    std::string_view head;
    std::string_view tail;
    std::string_view here;
};

/// The table, arranged for looking things up.
struct Lookup {
    std::unordered_map<std::string_view, std::string_view> whole;
    std::vector<Pattern> patterns;

    Lookup() {
        for (const auto& [source, here] : table()) {
            if (const auto place = source.find(hole); place != std::string_view::npos)
                patterns.push_back(
                    {source.substr(0, place), source.substr(place + hole.size()), here});
            else
                whole.emplace(source, here);
        }
    }
};

std::optional<std::string> filledIn(const Pattern& pattern, std::string_view text) {
    if (text.size() < pattern.head.size() + pattern.tail.size() || !text.starts_with(pattern.head)
        || !text.ends_with(pattern.tail))
        return std::nullopt;
    text.remove_prefix(pattern.head.size());
    text.remove_suffix(pattern.tail.size());
    std::string filled(pattern.here);
    const auto place = filled.find(hole);
    return place == std::string::npos ? filled : filled.replace(place, hole.size(), text);
}

} // namespace

std::string shown(std::string_view source) {
    // Never destroyed: another thread may still use it when the process ends.
    static const auto& lookup = *new Lookup;
    if (const auto found = lookup.whole.find(source); found != lookup.whole.end())
        return std::string(found->second);
    for (const Pattern& pattern : lookup.patterns)
        if (auto text = filledIn(pattern, source))
            return *std::move(text);
    return std::string(source);
}

} // namespace tidemark::systemWords
