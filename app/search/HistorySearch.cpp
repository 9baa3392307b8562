#include "app/search/HistorySearch.h"

#include "app/base/Background.h"
#include "core/base/Text.h"
#include "core/presentation/HistoryMatches.h"

#include <QLoggingCategory>
#include <algorithm>

namespace tidemark {

HistorySearch::HistorySearch(History history, Activate open)
    : history(std::move(history)), open(std::move(open)) {
    search();
}

void HistorySearch::setQuery(std::string query) {
    if (query == typed)
        return;
    typed = std::move(query);
    search();
}

void HistorySearch::search() {
    running.request_stop();
    running = std::stop_source();
    searching = true;
    tasks.start(run(running.get_token()));
}

QCoro::Task<void> HistorySearch::run(std::stop_token stop) {
    const auto hold = tasks.hold();
    // Closing the panel stops the search.
    std::stop_callback ending(tasks.token(),
                              [source = running]() mutable { source.request_stop(); });
    const auto find = [all = history(), query = typed](const std::stop_token& stopped) {
        return HistoryMatches::find(all->events, query, stopped);
    };
    std::vector<Shared<Event>> matches;
    try {
        auto found = co_await runInBackground(find, stop, WorkPriority::userInitiated);
        matches = std::move(found);
    } catch (const std::exception& error) {
        // Goes on without results, so that those of an earlier query are dropped.
        qCritical("The search failed: %s", error.what());
    }
    if (stop.stop_requested())
        co_return;
    results = std::move(matches);
    selection = results->empty() ? std::nullopt : std::optional(results->front()->id);
    searching = false;
}

void HistorySearch::moveSelection(std::ptrdiff_t delta) {
    const auto& found = *results;
    if (found.empty() || delta == 0)
        return;
    const auto last = std::ssize(found) - 1;
    const auto selected = std::ranges::find_if(
        found, [this](const Shared<Event>& event) { return event->id == *selection; });
    std::ptrdiff_t index = delta > 0 ? 0 : last;
    if (selected != found.end())
        index = std::clamp(selected - found.begin() + delta, std::ptrdiff_t{0}, last);
    selection = found[static_cast<std::size_t>(index)]->id;
}

void HistorySearch::openSelected() const {
    const auto selected = std::ranges::find_if(
        *results, [this](const Shared<Event>& event) { return event->id == *selection; });
    if (selected == results->end())
        return;
    // A copy, since the callback may destroy this object.
    const Activate activate = open;
    activate(*selected);
}

bool HistorySearch::isBlank() const {
    return trimmed(typed).empty();
}

std::string_view HistorySearch::caption() const {
    return isBlank() ? "Recent recorded history" : "Up to 40 matching events";
}

std::string_view HistorySearch::emptyTitle() const {
    return isBlank() ? "Your history starts here" : "No matching history";
}

std::string_view HistorySearch::emptyExplanation() const {
    return isBlank() ? "Search recorded changes, application events, paths, and system activity."
                     : "";
}

} // namespace tidemark
