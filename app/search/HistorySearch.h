#pragma once

#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "core/presentation/MergedHistory.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// One opening of the search panel: a query over the whole recorded history, whatever the user's
/// place in it, and the result that is chosen. Searching runs in the background, on the history as
/// it is when a search begins. A new opening makes a new one, so that the query starts empty. Main
/// thread only.
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

    /// Searches at once. `activate` is called with the event that the user opens; it may destroy
    /// this, as closing the panel does.
    HistorySearch(History searched, Activate activate);

    /// What the user has typed, as it is.
    const std::string& query() const { return typed; }
    /// Searches anew, if this is another query; the search that runs is given up.
    void setQuery(std::string query);

    Published<bool> searching{this};
    /// At most `HistoryMatches::limit`, newest first.
    Published<std::vector<Shared<Event>>> results{this};
    /// The identifier of one of the results.
    Published<std::optional<std::string>> selection{this};

    /// Moves on by so many results, and no further than to the first or the last.
    void moveSelection(std::ptrdiff_t delta);
    void openSelected() const;

    /// What stands above the results.
    std::string_view caption() const;
    /// What stands in place of results, when there are none; the second line may be empty.
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
