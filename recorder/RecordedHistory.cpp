#include "recorder/RecordedHistory.h"

#include "app/model/DataFiles.h"
#include "app/model/RecorderRuns.h"
#include "core/activity/ActivityEventBuilder.h"
#include "core/activity/SystemActivityStore.h"
#include "core/growth/StorageHistoryStore.h"
#include "core/journal/JournalStore.h"
#include "core/memory/MemoryEvents.h"
#include "core/memory/MemoryHistoryStore.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

namespace {

/// Runs `read` and stores its error, so that other sources are still read.
template <class Read>
auto orProblem(std::optional<std::string>& problem, const Read& read) -> decltype(read()) {
    try {
        return read();
    } catch (const Error& error) {
        problem = error.what();
        return {};
    }
}

} // namespace

RecordedHistory RecordedHistory::load(const DataFiles& files, std::int64_t clipboardDays) {
    RecordedHistory history;
    history.journal = JournalStore(files.journal()).load();
    history.activity = orProblem(history.activityProblem,
                                 [&] { return SystemActivityStore::read(files.systemActivity()); });
    history.memory = orProblem(history.memoryProblem,
                               [&] { return MemoryHistoryStore(files.memoryHistory()).load(); });
    history.memory.prune(Date::now(), clipboardDays);
    history.dailySizes = Shared(orProblem(history.dailySizesProblem, [&] {
        return StorageHistoryStore::read(files.storageHistory()).value_or(StorageHistory());
    }));
    std::optional<std::string> ignored;
    history.runs = orProblem(ignored, [&] { return RecorderRuns::read(files.recorderRuns()); });
    return history;
}

std::vector<std::string> RecordedHistory::problems() const {
    std::vector<std::string> all;
    for (const auto* problem : {&activityProblem, &memoryProblem, &dailySizesProblem})
        if (*problem)
            all.push_back(**problem);
    return all;
}

MergedHistory RecordedHistory::merged() const {
    std::vector<Shared<Event>> events = journal.events;
    std::ranges::copy(journal.installationEvents(), std::back_inserter(events));
    std::ranges::copy(ActivityEventBuilder::build(activity), std::back_inserter(events));
    for (auto& event : MemoryEvents::events(memory))
        events.emplace_back(std::move(event));
    return MergedHistory::of(std::move(events));
}

GrowthSource RecordedHistory::growth() const {
    return {Shared(Journal(journal)), dailySizes};
}

GapSource RecordedHistory::gaps() const {
    return {journal.snapshots, journal.events, activity, runs};
}

} // namespace tidemark
