#include "core/base/JsonEncoder.h"
#include "core/journal/JournalStore.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WatchedThread.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

Journal version(double number) {
    Journal journal;
    journal.lastChecked = Date{number};
    return journal;
}

/// A store in which a second thread calls `save(version(2))` when the first is about to write.
struct Contended {
    test::TemporaryFolder folder;
    bool hasSecond = false;
    JournalStore store{folder / "journal.json", folder / "old.json", std::nullopt,
                       FolderGuard([this] {
                           if (!std::exchange(hasSecond, true))
                               second.emplace([this] { store.save(version(2)); }).runUntilItWaits();
                           return true;
                       })};
    std::optional<test::WatchedThread> second{};

    Journal stored() {
        second.reset();
        return JournalStore(folder / "journal.json").load();
    }
};

} // namespace

TEST(JournalStoreThreads, SaveWaitsForALoadThatMovesTheHistory) {
    Contended place;
    place.folder.write("old.json", json::encoded(version(1)));
    EXPECT_EQ(place.store.load(), version(1));
    EXPECT_EQ(place.stored(), version(2));
}

TEST(JournalStoreThreads, SavesRunInTheOrderOfTheirCalls) {
    Contended place;
    place.store.save(version(1));
    place.store.save(version(3));
    EXPECT_EQ(place.stored(), version(3));
}
