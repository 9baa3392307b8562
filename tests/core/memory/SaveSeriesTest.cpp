#include "core/memory/SaveSeries.h"

#include "core/memory/FileRecords.h"
#include "core/memory/MemoryArchive.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

constexpr Date start{700'000'000};

/// An archive that receives the saves of files as the collector adds them.
struct Saves {
    void save(const std::string& path, double time, double observedLater = 3) {
        IndexedFileObservation file;
        file.path = path;
        file.modified = start + time;
        const Date now = start + (time + observedLater);
        archive.upsert(
            SaveSeries::continued(archive.records, FileRecords::of(std::array{file}, start, now)),
            now, 7);
    }

    MemoryArchive archive;
};

} // namespace

TEST(SaveSeries, HasOneRecordForManySaves) {
    struct Case {
        const char* meaning;
        double every;
        double until;
        std::size_t records;
    };
    const Case cases[] = {
        {"saved every three seconds for ten hours", 3, 36'000, 10},
        {"within the pause", 600, 3'000, 1},
        {"with longer pauses", 601, 3'005, 5},
    };
    for (const auto& [meaning, every, until, records] : cases) {
        Saves saves;
        double last = 0;
        for (int count = 0; count * every < until; ++count) {
            last = count * every;
            for (const char* path : {"/a", "/b"})
                saves.save(path, last);
        }
        EXPECT_EQ(saves.archive.records.size(), 2 * records) << meaning;
        EXPECT_EQ(saves.archive.records.front()->timestamp, start + last) << meaning;
    }
}

TEST(SaveSeries, KeepsItsStartAndIgnoresARepeatedSave) {
    Saves saves;
    saves.save("/a", 10);
    saves.save("/a", 20);
    saves.save("/a", 30);
    const auto before = saves.archive;
    saves.save("/a", 30, 500);
    EXPECT_EQ(saves.archive, before);
    ASSERT_EQ(before.records.size(), 1U);
    EXPECT_EQ(before.records[0]->timestamp, start + 30.0);
    EXPECT_EQ(before.records[0]->observedAt, start + 13.0);
    // A save from before the time of the record gets a record of its own.
    saves.save("/a", 5);
    EXPECT_EQ(saves.archive.records.size(), 2U);
}
