#include "core/presentation/HistoryMatches.h"

#include "core/base/PhraseSearch.h"
#include "core/base/Text.h"
#include "core/timeline/EventDisplay.h"

namespace tidemark::HistoryMatches {

namespace {

void appendSearchText(const Event& event, std::string& text) {
    text += displayTitle(event);
    text += ' ';
    text += displaySubtitle(event);
    text += ' ';
    if (event.path)
        text += *event.path;
    text += ' ';
    text += rawValue(event.category);
    text += ' ';
    if (event.memory && event.memory->text)
        text += *event.memory->text;
}

} // namespace

std::vector<Shared<Event>> find(const std::vector<Shared<Event>>& events, std::string_view query,
                                const std::stop_token& stop) {
    const std::string_view sought = trimmed(query);
    PhraseSearch phrase(sought);
    std::vector<Shared<Event>> matches;
    std::string text;
    for (const Shared<Event>& event : events) {
        if (matches.size() == limit || stop.stop_requested())
            break;
        if (!sought.empty()) {
            text.clear();
            appendSearchText(*event, text);
            if (!phrase.isIn(text))
                continue;
        }
        matches.push_back(event);
    }
    return matches;
}

} // namespace tidemark::HistoryMatches
