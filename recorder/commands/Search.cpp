#include "core/presentation/HistoryMatches.h"
#include "recorder/Commands.h"
#include "recorder/EventAnswer.h"
#include "recorder/Recorder.h"
#include "recorder/StoredRecords.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SearchOptions {
    std::optional<std::string> text;
    bool panel = false;
    bool ids = false;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"text",
                   &SearchOptions::text,
                   "Text to search for",
                   {.isPositional = true, .excludes = {"panel"}}},
            Option{"panel", &SearchOptions::panel,
                   "Open the search panel of tidemark-desktop instead"},
            Option{"ids", &SearchOptions::ids, eventIDsHelp},
            Option{"json", &SearchOptions::json, "Print stored JSON instead of text"}};
    }
};

std::string found(const HistoryReading& reading, const SearchOptions& options) {
    if (!options.text)
        throw UsageError("A text to search for is needed, or --panel.");
    const auto merged = reading.history.merged();
    return eventAnswer(HistoryMatches::find(merged.events, *options.text, reading.stop), reading,
                       {options.json, options.ids}, "Nothing was found.\n");
}

QCoro::Task<std::string> search(CommandContext& context, const SearchOptions& options) {
    if (!options.panel) {
        const detail::HistoryReader answer = [options](const HistoryReading& reading) {
            return found(reading, options);
        };
        auto reading = detail::liveHistory(context, answer);
        std::string text = co_await reading;
        co_return text;
    }
    const auto& show = context.recorder.requests().showSearch;
    if (!show)
        throw Error("No window is open; tidemark-desktop opens one.");
    show();
    co_return "";
}

std::optional<CommandAnswer> storedSearch(StoredRecords& stored, const SearchOptions& options) {
    if (options.panel)
        throw Error("No window is open; tidemark-desktop opens one.");
    return detail::storedHistory(
        stored, [&](const HistoryReading& reading) { return found(reading, options); });
}

} // namespace

Command commands::search() {
    return makeCommand<SearchOptions, &tidemark::search>(
        {
            .name = "search",
            .group = CommandGroup::history,
            .summary = "Search the whole history",
        },
        {.fromStored = storedSearch,
         .needsProgram = [](const SearchOptions& options) { return options.panel; }});
}

} // namespace tidemark
