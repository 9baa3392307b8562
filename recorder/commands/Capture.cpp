#include "app/base/Background.h"
#include "app/preferences/PreferenceKeys.h"
#include "recorder/Commands.h"
#include "recorder/FirstFolders.h"
#include "recorder/HistoryTime.h"
#include "recorder/Recorder.h"
#include "recorder/SetupChoice.h"
#include "recorder/TimelinePrinter.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct CaptureOptions {
    std::optional<SetupChoice> setup;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"setup", &CaptureOptions::setup,
                   "Before the capture, monitor the recommended folders that can be read, or none"},
            Option{"json", &CaptureOptions::json, "Print the new events as stored JSON"}};
    }
};

/// The events of the capture that made this snapshot: their ids contain that of the snapshot.
std::vector<Shared<Event>> eventsOf(const Journal& journal, const Uuid& snapshot) {
    const std::string name = snapshot.text();
    std::vector<Shared<Event>> made;
    for (const auto& event : journal.events)
        if (event->id.find(name) != std::string::npos)
            made.push_back(event);
    return made;
}

std::string captured(const CommandContext& context, bool asJson, bool isCompared) {
    const auto events = eventsOf(*context.state().journal(), context.state().latest()->id);
    if (asJson)
        return json::encoded(events) + "\n";
    const std::string head =
        "Captured " + historyTime::moment(context.state().lastCapture()) + ".\n";
    if (!events.empty())
        return head + TimelinePrinter(Calendar(), context.colour).text(events);
    return head
           + (isCompared ? "Nothing changed since the capture before.\n"
                         : "It is a new starting point: the next one is compared with it.\n");
}

QCoro::Task<void> chooseFolders(CommandContext& context, SetupChoice setup) {
    std::vector<RecommendedFolder> offered;
    if (setup == SetupChoice::recommended)
        offered = context.folders().recommendedFolders();
    const auto look = [offered](const std::stop_token&) { return firstFolders::readable(offered); };
    auto chosen = co_await runInBackground(look, context.stop);
    co_await firstFolders::choose(context.recorder, std::move(chosen));
}

QCoro::Task<std::string> capture(CommandContext& context, const CaptureOptions& options) {
    auto& state = context.state();
    const bool isNewStart = read(context.preferences(), preferenceKeys::needsRecordingBaseline);
    const auto before = state.keptCaptures();
    if (options.setup)
        co_await chooseFolders(context, *options.setup);
    // The start takes a capture itself when one is due.
    auto starting =
        context.isRunning ? context.model().start() : context.model().startForOneCapture();
    co_await starting;
    context.requireHistory();
    if (!state.canRecord())
        throw Error("Recording is paused; tidemark resume takes it up again.");
    const bool wasBusy = state.isAnyRunning(exclusions::captures.with(exclusions::saves));
    if (state.keptCaptures() == before)
        co_await context.model().scan(true);
    if (state.keptCaptures() == before)
        throw Error(wasBusy ? anotherOperation : state.error->value_or(anotherOperation));
    co_return captured(context, options.json, state.journal()->snapshots.size() > 1 && !isNewStart);
}

} // namespace

Command commands::capture() {
    return makeCommand<CaptureOptions, &tidemark::capture>({
        .name = "capture",
        .group = CommandGroup::recording,
        .summary = "Take a capture now and show what changed",
    });
}

} // namespace tidemark
