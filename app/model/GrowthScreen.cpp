#include "app/model/GrowthScreen.h"

#include "app/base/Background.h"
#include "app/model/Log.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

constexpr double day = 86'400;

const StorageSubject& subjectOf(const std::vector<StorageSubject>& subjects,
                                const std::string& path) {
    const auto found = std::ranges::find(subjects, path, &StorageSubject::path);
    return found == subjects.end() ? subjects.front() : *found;
}

} // namespace

std::string_view label(GrowthSpan span) {
    switch (span) {
    case GrowthSpan::day:
        return "24 hours";
    case GrowthSpan::week:
        return "7 days";
    case GrowthSpan::month:
        return "30 days";
    case GrowthSpan::quarter:
        return "3 months";
    case GrowthSpan::year:
        return "1 year";
    case GrowthSpan::all:
        return "All";
    }
    return "";
}

std::optional<Date> startOf(GrowthSpan span, Date now) {
    switch (span) {
    case GrowthSpan::day:
        return now + -day;
    case GrowthSpan::week:
        return now + -7 * day;
    case GrowthSpan::month:
        return now + -30 * day;
    case GrowthSpan::quarter:
        return now + -91 * day;
    case GrowthSpan::year:
        return now + -365 * day;
    case GrowthSpan::all:
        return std::nullopt;
    }
    return std::nullopt;
}

GrowthScreen::GrowthScreen(ModelState& state, StorageHistoryKeeper& sizes, RecorderRuns& runs,
                           AppClock& clock, const TaskScope& tasks)
    : state(state), sizes(sizes), runs(runs), clock(clock), tasks(tasks) {
    // After each of these changes, a view that observes this object asks for the content, which is
    // made anew if the journal or the sizes have changed. The runs are not part of the content:
    // they change only what `gapSource` returns.
    connect(&state, &ModelState::changed, this, &GrowthScreen::followSources);
    connect(&sizes, &StorageHistoryKeeper::changed, this, &GrowthScreen::followSources);
    connect(&runs, &RecorderRuns::changed, this, &GrowthScreen::noteChange);
}

void GrowthScreen::followSources() {
    const Revisions now{state.journalRevision(), sizes.revision()};
    if (std::exchange(seen, now) != now)
        noteChange();
}

GrowthScreen::Choice GrowthScreen::present() const {
    return {chosenPath, chosenSpan, {state.journalRevision(), sizes.revision()}};
}

std::shared_ptr<const GrowthScreen::Content> GrowthScreen::content() {
    const Choice wanted = present();
    if (runningFor == wanted)
        return made;
    stopping.request_stop();
    runningFor.reset();
    if (madeFor == wanted)
        return made;
    stopping = std::stop_source();
    runningFor = wanted;
    tasks.start(prepare(wanted, stopping.get_token()));
    return made;
}

QCoro::Task<void> GrowthScreen::prepare(Choice choice, std::stop_token stop) {
    const auto hold = tasks.hold();
    const auto make = [source = source(), choice, now = clock.now()](const std::stop_token&) {
        Content content;
        const auto since = startOf(choice.span, now);
        content.subjects = storageSubjects(source);
        content.chart = StorageChart::of(source, subjectOf(content.subjects, choice.path), since,
                                         now, Calendar());
        content.growth = GrowthReport::of(source, since.value_or(Date::distantPast()), now);
        return content;
    };
    std::shared_ptr<const Content> content;
    try {
        Content ready = co_await runInBackground(make, stop, WorkPriority::userInitiated);
        content = std::make_shared<const Content>(std::move(ready));
    } catch (const std::exception& error) {
        qCCritical(capturesLog, "The chart could not be made: %s", error.what());
    }
    if (stop.stop_requested() || tasks.isStopping())
        co_return;
    runningFor.reset();
    // Set after a failure as well: making the same content again would fail again.
    madeFor = choice;
    if (content)
        made = std::move(content);
    noteChange();
}

void GrowthScreen::choose(std::string path) {
    if (path == chosenPath)
        return;
    chosenPath = std::move(path);
    noteChange();
}

void GrowthScreen::setSpan(GrowthSpan span) {
    if (std::exchange(chosenSpan, span) != span)
        noteChange();
}

GapSource GrowthScreen::gapSource() const {
    const Journal& journal = *state.journal();
    return {journal.snapshots, journal.events, state.systemActivity(), runs.records()};
}

std::vector<GapRow> GrowthScreen::gaps(Date since) const {
    // Starts at the capture before `since`, so that a gap that began before `since` is shown whole.
    const auto& snapshots = state.journal()->snapshots;
    const auto later = std::ranges::upper_bound(
        snapshots, since, {}, [](const auto& snapshot) { return snapshot->timestamp; });
    const Date from = later == snapshots.begin() ? since : (*std::prev(later))->timestamp;
    return gapRows(gapSource(), from, clock.now(), Calendar());
}

HistoryDigest GrowthScreen::digest(const std::vector<Shared<Event>>& timeline, Date since) const {
    return HistoryDigest::of(source(), timeline, gapSource(), since, clock.now(), Calendar());
}

} // namespace tidemark
