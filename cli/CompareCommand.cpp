#include "cli/CompareCommand.h"

#include "cli/Console.h"
#include "cli/TimelinePrinter.h"
#include "core/base/Documents.h"
#include "core/journal/Journal.h"

namespace tidemark {

namespace {

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
