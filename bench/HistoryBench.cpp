// The work that a view waits for: merging the history of all sources, rebuilding the part that is
// shown, and searching.

#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "bench/Generator.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/activity/ActivityEventBuilder.h"
#include "core/presentation/HistoryMatches.h"
#include "core/presentation/HistoryView.h"

#include <QCoreApplication>
#include <array>
#include <atomic>
#include <thread>

using namespace tidemark;
using namespace tidemark::bench;

namespace {

using Events = std::vector<Shared<Event>>;

constexpr int runs = 51;
constexpr std::size_t journalLength = 10'000;
constexpr std::size_t activityLength = 2'000;
constexpr std::size_t memoryLength = 10'000;
constexpr std::size_t clipEvery = 50;
constexpr std::size_t longestClips = 100'000;

std::vector<Shared<SystemActivity>> activities(Date end) {
    constexpr std::array kinds{SystemActivity::Kind::sleepRequested, SystemActivity::Kind::woke,
                               SystemActivity::Kind::volumeChanged,
                               SystemActivity::Kind::wifiChanged,
                               SystemActivity::Kind::networkChanged};
    std::vector<Shared<SystemActivity>> records;
    for (std::size_t i = activityLength; i > 0; --i) {
        SystemActivity record;
        record.id = Uuid::random();
        record.timestamp = end + -static_cast<double>(i) * 700.5;
        record.kind = kinds[i % kinds.size()];
        record.wifiConnected = i % 2 == 0;
        records.emplace_back(std::move(record));
    }
    return records;
}

/// Files, downloads and applications, and 200 clips of about `clipBytes` bytes each.
Events memories(Date end, std::size_t clipBytes) {
    using enum MemoryRecord::Kind;
    constexpr std::array kinds{fileOpened, fileModified, downloaded, appLaunched, appClosed};
    constexpr std::array categories{EventCategory::files, EventCategory::files,
                                    EventCategory::downloads, EventCategory::applications,
                                    EventCategory::applications};
    std::string clip;
    while (clip.size() < clipBytes)
        clip += "The quick brown fox jumps over the lazy dog. ";
    Events events;
    for (std::size_t i = 0; i < memoryLength; ++i) {
        const bool isClip = i % clipEvery == 0;
        MemoryRecord record;
        record.id = Uuid::random().text();
        record.kind = isClip ? clipboard : kinds[i % kinds.size()];
        record.timestamp = end + -static_cast<double>(i) * 250.25;
        record.title = "Bericht für Quartal " + std::to_string(i % 7'000) + ".pdf";
        record.path = "/Users/someone/Documents/Projects/" + record.title;
        if (isClip)
            record.text = clip;
        Event event;
        event.id = "memory-" + record.id;
        event.timestamp = event.intervalStart = record.timestamp;
        event.title = record.title;
        event.subtitle = "Last used · /Users/someone/Documents/Projects";
        event.category = isClip ? EventCategory::clipboard : categories[i % categories.size()];
        event.path = record.path;
        event.memory.emplace(std::move(record));
        events.emplace_back(std::move(event));
    }
    return events;
}

struct Sources {
    Events journal = eventsOf(journalLength);
    Date end = journal.front()->timestamp;
    std::vector<Shared<SystemActivity>> activity = activities(end);
    Events memory;

    explicit Sources(std::size_t clipBytes) : memory(memories(end, clipBytes)) {}

    MergedHistory merged(const Events& activityEvents) const {
        Events all = journal;
        all.insert(all.end(), activityEvents.begin(), activityEvents.end());
        all.insert(all.end(), memory.begin(), memory.end());
        return MergedHistory::of(std::move(all));
    }
};

double milliseconds(auto work) {
    return medianOf(runs, [&] { return seconds(work); }) * 1e3;
}

void refresh(const MergedHistory& history, Date now, const char* what, std::string search,
             double bound) {
    HistoryPlace place{.window = HistoryTimeWindow::all, .search = std::move(search)};
    std::size_t shown = 0;
    const double figure = milliseconds([&] {
        shown = presentHistory(history, place, now, Calendar()).presentation.events.size();
    });
    row(std::string("refresh, ") + what + ", shows " + std::to_string(shown), figure, "ms", bound);
}

void search(const MergedHistory& history, const char* what, std::string_view query, double bound) {
    std::size_t found = 0;
    const double figure =
        milliseconds([&] { found = HistoryMatches::find(history.events, query).size(); });
    row(std::string("search, ") + what + ", finds " + std::to_string(found), figure, "ms", bound);
}

/// The time from cancelling a running search to its end.
void cancellation(const MergedHistory& history) {
    const double figure = medianOf(runs, [&] {
        std::stop_source source;
        std::atomic<bool> walking = false;
        std::thread searching([&] {
            walking = true;
            while (!source.stop_requested())
                HistoryMatches::find(history.events, "nothing", source.get_token());
        });
        while (!walking)
            std::this_thread::yield();
        return seconds([&] {
            source.request_stop();
            searching.join();
        });
    });
    row("search, from its cancellation to its end", figure * 1e3, "ms", 5);
}

void all(const Sources& sources, bool isBounded) {
    const auto bound = [&](double limit) { return isBounded ? limit : 0; };
    const MergedHistory history = sources.merged(ActivityEventBuilder::build(sources.activity));
    refresh(history, sources.end, "no search text", "", bound(10));
    refresh(history, sources.end, "search text", "application 17", bound(16));
    refresh(history, sources.end, "search text beyond ASCII", "für Quartal 12", bound(16));
    search(history, "the newest", "", bound(20));
    search(history, "no match", "no such text", bound(20));
    search(history, "no match beyond ASCII", "größer", bound(20));
    cancellation(history);
}

/// A clock that stands still until `time` is changed.
class StandingClock final : public AppClock {
public:
    explicit StandingClock(Date at) : time(at) {}

    Date now() override { return time; }
    double monotonicSeconds() override { return 0; }
    QCoro::Task<bool> sleep(double, std::stop_token, Slack) override { co_return false; }

    Date time;
};

/// How long adding one file to a full memory history blocks the event loop of a recorder, from the
/// record to the new presentation. For comparison, also how long it takes to make the events of the
/// memory history anew and merge them with those of the journal.
void oneMoreRecord(const Sources& sources) {
    const Workspace workspace;
    StandingClock clock(sources.end);
    JsonPreferences preferences(workspace.path() / "settings.json");
    NotificationCenter center;
    MemoryHistoryService memory({.url = workspace.path() / "memory-history.json",
                                 .preferences = preferences,
                                 .workspaceCenter = center,
                                 .clock = clock});
    ModelState state(preferences, clock.now());
    LiveWiring live({.state = state,
                     .activityURL = workspace.path() / "system-activity.json",
                     .workspaceCenter = center,
                     .memory = memory,
                     .clock = clock});
    AppModel model({.state = state,
                    .live = live,
                    .preferences = preferences,
                    .files = {workspace.path(), {}},
                    .applicationCenter = center,
                    .workspaceCenter = center,
                    .clock = clock,
                    .home = workspace.path()});
    auto& screen = model.history();
    QObject::connect(&memory, &MemoryHistoryService::changed, &screen,
                     [&] { screen.setMemory(memory.archive()); });
    Journal journal;
    journal.events = sources.journal;
    model.state().setJournal(std::move(journal));
    model.state().setSystemActivity(sources.activity);
    const auto handleUntil = [](const auto& isDone) {
        while (!isDone())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    };
    const auto loading = memory.load();
    handleUntil([&] { return loading.isReady(); });
    std::vector<MemoryRecord> records;
    for (const auto& event : sources.memory)
        records.push_back(*event->memory);
    memory.update(std::move(records));

    for (const char* window : {"week", "all"}) {
        screen.setRange(window);
        double longest = 0;
        const double figure = medianOf(runs, [&] {
            const auto writing = memory.writer();
            handleUntil([&] { return writing.isReady(); });
            clock.time = clock.time + 1;
            MemoryRecord record = *sources.memory[1]->memory;
            record.id = Uuid::random().text();
            record.timestamp = clock.time;
            const double block = seconds([&] {
                memory.update({std::move(record)});
                QCoreApplication::processEvents();
            });
            longest = std::max(longest, block);
            return block;
        });
        const std::string title = std::string("block of the loop by one memory record, ") + window;
        row(title, figure * 1e3, "ms", 5);
        row("  the longest", longest * 1e3, "ms");
    }
    const auto writing = memory.writer();
    handleUntil([&] { return writing.isReady(); });
    row("  with all events made and merged anew", milliseconds([&] {
            Events all = sources.journal;
            MemoryEventList fresh;
            const auto made = fresh.update(memory.archive().records).added;
            all.insert(all.end(), made.begin(), made.end());
            MergedHistory::of(std::move(all));
        }),
        "ms");
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const Sources sources(1'000);
    const Events activityEvents = ActivityEventBuilder::build(sources.activity);
    row("events of 2,000 activity records",
        milliseconds([&] { ActivityEventBuilder::build(sources.activity); }), "ms");
    row("merging 10,000 + 2,000 + 10,000 events",
        milliseconds([&] { sources.merged(activityEvents); }), "ms", 16);
    all(sources, true);
    oneMoreRecord(sources);
    std::puts("With clips at their limit of 20 MB:");
    all(Sources(longestClips), false);
}
