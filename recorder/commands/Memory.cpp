#include "core/presentation/SystemWords.h"
#include "recorder/Commands.h"
#include "recorder/HistoryTime.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct MemoryOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{
            "json", &MemoryOptions::json,
            "Print stored JSON instead of text, without images and the formatting of texts"}};
    }
};

/// The records without their payloads, which are images and formatted texts. As in the stored
/// document, `payloadStored` is set in a record that had a payload. The texts of clips, which the
/// stored document keeps in files of their own, stay in the records here.
std::vector<Shared<MemoryRecord>> withoutPayloads(std::vector<Shared<MemoryRecord>> records) {
    for (auto& record : records)
        if (record->payload) {
            MemoryRecord light = *record;
            light.payload.reset();
            light.payloadStored = true;
            record.emplace(std::move(light));
        }
    return records;
}

std::string memory(const HistoryReading& reading, const MemoryOptions& options) {
    // A file that can't be read is not an empty one.
    if (reading.history.memoryProblem)
        throw Error(*reading.history.memoryProblem);
    const auto& records = reading.history.memory.records;
    if (options.json)
        return json::encoded(withoutPayloads(records)) + "\n";
    std::string out;
    const Calendar calendar;
    for (const auto& record : records)
        out += historyTime::moment(record->timestamp, "", calendar) + "  " + oneLine(record->title)
               + "  " + oneLine(systemWords::shown(record->subtitle())) + "\n";
    return out.empty() ? "Nothing has been remembered.\n" : out;
}

} // namespace

Command commands::memory() {
    return makeCommand<MemoryOptions, &tidemark::memory>({
        .name = "memory",
        .group = CommandGroup::history,
        .summary = "List files, downloads, launches and clips",
    });
}

} // namespace tidemark
