#include "core/presentation/HistoryMatches.h"
#include "recorder/Commands.h"
#include "recorder/EventAnswer.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct Options {
    std::string text;
    bool ids = false;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{"text",
                                 &Options::text,
                                 "Text to search for",
                                 {.isPositional = true, .isRequired = true}},
                          Option{"ids", &Options::ids, eventIDsHelp},
                          Option{"json", &Options::json, "Print stored JSON instead of text"}};
    }
};

std::string search(const HistoryReading& reading, const Options& options) {
    const auto merged = reading.history.merged();
    return eventAnswer(HistoryMatches::find(merged.events, options.text, reading.stop), reading,
                       {options.json, options.ids}, "Nothing was found.\n");
}

} // namespace

Command commands::search() {
    return makeCommand<Options, &tidemark::search>({
        .name = "search",
        .group = CommandGroup::history,
        .summary = "Search the whole history",
    });
}

} // namespace tidemark
