#include "cli/Console.h"
#include "cli/TerminalCommands.h"
#include "core/base/Documents.h"
#include "core/base/JsonEncoder.h"
#include "core/journal/Journal.h"
#include "recorder/TimelinePrinter.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct CompareOptions {
    FilePath before;
    FilePath after;
    bool json = false;

    static constexpr auto fields() {
        constexpr OptionForm file{.isPositional = true, .isRequired = true};
        return std::tuple{
            Option{"before", &CompareOptions::before, "File with the earlier observation", file},
            Option{"after", &CompareOptions::after, "File with the later observation", file},
            Option{"json", &CompareOptions::json, "Print the events as one JSON array"}};
    }
};

Snapshot readSnapshot(const std::filesystem::path& path) {
    const auto bytes = readDocumentBytes(path);
    if (!bytes)
        throw FileError::ofSystem(path, "could not be read", ENOENT);
    try {
        return json::decode<Snapshot>(*bytes);
    } catch (const json::DecodingError& error) {
        throw FileError(path, std::string("is not a stored observation: ") + error.what());
    }
}

int compare(const CompareOptions& options) {
    const Snapshot from = readSnapshot(options.before.path());
    const Snapshot to = readSnapshot(options.after.path());
    std::vector<Event> events = Journal::eventsBetween(from, to);
    if (options.json) {
        json::write(events, console::print);
        console::print("\n");
        return 0;
    }
    const TimelinePrinter printer(Calendar(), console::useColour());
    const std::string between =
        "between " + printer.moment(from.timestamp) + " and " + printer.moment(to.timestamp);
    if (events.empty()) {
        console::print("Nothing changed " + between + ".\n");
        return 0;
    }
    console::print("What changed " + between + ":\n\n"
                   + printer.text({std::make_move_iterator(events.begin()),
                                   std::make_move_iterator(events.end())}));
    return 0;
}

} // namespace

Command commands::compare() {
    return makeCommand<CompareOptions, &tidemark::compare>({
        .name = "compare",
        .group = CommandGroup::observations,
        .summary = "Show what changed between two stored observations",
    });
}

} // namespace tidemark
