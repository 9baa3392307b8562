#pragma once

#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "core/presentation/MergedHistory.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// The state of the search panel from opening to closing: a query over the whole recorded history,
/// independent of the user's place in it, its results and the selected one. Searches run in the
/// background; each searches the history as it was when the search began. Main thread only.
class HistorySearch : public Observable {
    Q_OBJECT

public:
    using History = std::function<std::shared_ptr<const MergedHistory>()>;
    using Activate = std::function<void(Shared<Event>)>;

    static constexpr std::string_view title = "Search Tidemark";
    static constexpr std::string_view prompt = "Search Tidemark…";
    static constexpr std::string_view keysHint = "↑↓ select   ↵ open";
    static constexpr std::string_view escapeHint = "Esc to close";
    static constexpr std::string_view dismissLabel = "Dismiss search";

    /// Starts a search for the newest events. `open` is called with the event that the user opens;
    /// it may destroy this object.
    HistorySearch(History history, Activate open);

    /// The query exactly as the user typed it.
    const std::string& query() const { return typed; }
    /// Starts a new search if the query has changed, and cancels the running one.
    void setQuery(std::string query);

    Published<bool> searching{this};
    /// At most `HistoryMatches::limit`, newest first.
    Published<std::vector<Shared<Event>>> results{this};
    /// The identifier of one of the results; absent without results.
    Published<std::optional<std::string>> selection{this};

    /// Moves the selection by `delta` results, towards older ones if positive; at most to the first
    /// or the last.
    void moveSelection(std::ptrdiff_t delta);
    void openSelected() const;

    /// The text above the results.
    std::string_view caption() const;
    /// The text shown when there are no results; the second line may be empty.
    std::string_view emptyTitle() const;
    std::string_view emptyExplanation() const;

private:
    bool isBlank() const;
    void search();
    QCoro::Task<void> run(std::stop_token stop);

    const History history;
    const Activate open;
    std::string typed;
    std::stop_source running{std::nostopstate};
    TaskScope tasks;
};

} // namespace tidemark
