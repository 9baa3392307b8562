#include "cli/CompareCommand.h"

#include "cli/Console.h"
#include "core/base/Files.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/journal/Journal.h"
#include "recorder/TimelinePrinter.h"

namespace tidemark {

namespace {

/// Far beyond any real observation, and still something that can be held in memory.
constexpr std::size_t largestDocument = std::size_t{1} << 30;

Snapshot readSnapshot(const std::filesystem::path& path) {
    const std::string bytes = readFile(path, largestDocument);
    try {
        return json::decode<Snapshot>(bytes);
    } catch (const json::DecodingError& error) {
        throw Error(asSentence(textFromBytes(path.native())
                               + " is not a stored observation: " + error.what()));
    }
}

} // namespace

void CompareCommand::run() const {
    const Snapshot from = readSnapshot(before);
    const Snapshot to = readSnapshot(after);
    std::vector<Event> events = Journal::eventsBetween(from, to);
    if (json) {
        json::write(events, console::print);
        console::print("\n");
        return;
    }
    const TimelinePrinter printer(Calendar(), console::useColour());
    const std::string between =
        "between " + printer.moment(from.timestamp) + " and " + printer.moment(to.timestamp);
    if (events.empty()) {
        console::print("Nothing changed " + between + ".\n");
        return;
    }
    console::print("What changed " + between + ":\n\n"
                   + printer.text({std::make_move_iterator(events.begin()),
                                   std::make_move_iterator(events.end())}));
}

} // namespace tidemark
