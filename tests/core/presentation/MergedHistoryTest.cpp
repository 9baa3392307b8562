#include "core/presentation/MergedHistory.h"

#include "core/memory/MemoryEventList.h"
#include "core/timeline/TimelinePresentation.h"

#include <random>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

using Kind = MemoryRecord::Kind;

MemoryRecord randomRecord(std::mt19937& random, int number) {
    MemoryRecord record;
    // Many records have the same time, and the ids are not in order of time.
    record.timestamp = Date{static_cast<double>(random() % 20)};
    record.id = std::to_string(random() % 1'000) + "-" + std::to_string(number);
    record.kind = static_cast<Kind>(random() % json::rawValues<Kind>.size());
    record.title = "made";
    return record;
}

std::vector<Shared<Event>> journal() {
    std::vector<Shared<Event>> events;
    for (int i = 0; i < 20; ++i) {
        Event event;
        event.id = "journal-" + std::to_string(i);
        event.timestamp = Date{static_cast<double>(i)};
        events.emplace_back(std::move(event));
    }
    return events;
}

void expectSame(const MergedHistory& changed, const MergedHistory& whole) {
    for (const auto list : {&MergedHistory::full, &MergedHistory::events, &MergedHistory::timeline})
        EXPECT_EQ(changed.*list, whole.*list);
}

} // namespace

TEST(MergedHistory, EqualsARebuildAfterAnUpdate) {
    std::mt19937 random(7);
    MemoryArchive archive;
    MemoryEventList memory;
    MergedHistory history = MergedHistory::of(journal());
    int number = 0;
    for (int step = 0; step < 200; ++step) {
        auto& records = archive.records;
        for (auto added = random() % 4; added > 0; --added)
            records.insert(records.begin(), Shared(randomRecord(random, number++)));
        for (auto removed = random() % 4; removed > 0 && !records.empty(); --removed)
            records.erase(records.begin() + static_cast<std::ptrdiff_t>(random() % records.size()));
        if (!records.empty()) {
            MemoryRecord renamed = *records.back();
            renamed.title += "!";
            if (random() % 2 == 0)
                renamed.timestamp = Date{static_cast<double>(random() % 20)};
            records.back().emplace(std::move(renamed));
        }
        auto change = memory.update(records);
        history = history.changed(std::move(change.removed), std::move(change.added));

        auto all = journal();
        for (const auto& event : MemoryEventList().update(records).added)
            all.push_back(event);
        expectSame(history, MergedHistory::of(std::move(all)));
        EXPECT_EQ(memory.events().size(), records.size());
    }
    EXPECT_GT(number, 200);
}

TEST(MemoryEventList, MakesEventsOnlyForNewRecords) {
    std::mt19937 random(7);
    MemoryArchive archive;
    for (int i = 0; i < 3; ++i)
        archive.records.emplace_back(randomRecord(random, i));
    MemoryEventList memory;
    EXPECT_EQ(memory.update(archive.records).added.size(), 3U);
    EXPECT_TRUE(memory.update(archive.records).isEmpty());
    archive.records.emplace_back(randomRecord(random, 3));
    const auto gone = archive.records.front();
    archive.records.erase(archive.records.begin());
    const auto change = memory.update(archive.records);
    ASSERT_EQ(change.added.size(), 1U);
    EXPECT_EQ(*change.added[0]->memory, *archive.records.back());
    ASSERT_EQ(change.removed.size(), 1U);
    EXPECT_EQ(*change.removed[0]->memory, *gone);
}
