// The memory history at its limits: its store, and how long one more record blocks the event loop.

#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/memory/MemoryEvents.h"
#include "core/memory/MemoryHistoryStore.h"

using namespace tidemark;
using namespace tidemark::bench;

namespace {

constexpr int runs = 21;
constexpr Date now{800'000'000};
/// With these two sizes all clips together stay just below their limit in bytes.
constexpr std::size_t payloadSize = 80'000;
constexpr std::size_t textSize = 15'000;

MemoryRecord fileRecord(int number) {
    const Date date = now + (-200.0 * number - 0.123456);
    const std::string name = "Quarterly report " + std::to_string(number) + ".odt";
    auto record = MemoryRecord::make(MemoryRecord::Kind::fileModified, date, name,
                                     "/home/somebody/Documents/Projects/2026/" + name);
    record.id = MemoryRecord::fileID(record.kind, *record.path, date);
    record.bytes = 123'456 + number;
    record.lastOpened = date;
    record.observedAt = now;
    return record;
}

MemoryRecord clip(int number) {
    auto record = MemoryRecord::make(MemoryRecord::Kind::clipboard, now + -60.0 * number,
                                     "Copied text", {}, "Editor", "org.example.Editor", now);
    record.payload = Data{std::string(payloadSize, static_cast<char>(number))};
    record.text = std::string(textSize, 'a');
    record.contentType = "Rich Text";
    return record;
}

MemoryArchive archiveAtItsLimits() {
    std::vector<MemoryRecord> records;
    for (std::size_t i = 0; i < MemoryArchive::otherLimit; ++i)
        records.push_back(fileRecord(static_cast<int>(i)));
    for (std::size_t i = 0; i < MemoryArchive::clipLimit; ++i)
        records.push_back(clip(static_cast<int>(i)));
    MemoryArchive archive;
    archive.upsert(std::move(records), now, 7);
    return archive;
}

} // namespace

int main() {
    const Workspace workspace;
    const auto url = workspace.path() / "memory-history.json";
    const MemoryArchive archive = archiveAtItsLimits();
    MemoryHistoryStore store(url);
    store.load();
    row("save of 10,000 records and 200 new clips", seconds([&] { store.save(archive); }) * 1e3,
        "ms");
    row("save again, with no new clip",
        medianOf(runs, [&] { return seconds([&] { store.save(archive); }); }) * 1e3, "ms");

    std::size_t records = 0;
    const double load = medianOf(runs, [&] {
        return seconds([&] { records = MemoryHistoryStore(url).load().records.size(); });
    });
    row("load of 10,000 records with 200 clips in side files", load * 1e3, "ms", 200);
    row("records loaded", static_cast<double>(records), "");
    row("document", static_cast<double>(std::filesystem::file_size(url)) / 1e6, "MB");

    const double upsert = medianOf(runs, [&] {
        MemoryArchive next;
        return seconds([&] {
            next = archive;
            next.upsert({clip(-1)}, now, 7);
        });
    });
    row("copy of the archive and one clip more", upsert * 1e3, "ms", 10);
    std::size_t events = 0;
    const double conversion = medianOf(
        runs, [&] { return seconds([&] { events = MemoryEvents::events(archive).size(); }); });
    row("events of all its records", conversion * 1e3, "ms", 20);
    return events == records ? 0 : 1;
}
