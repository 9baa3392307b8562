#include "core/base/Documents.h"
#include "core/base/JsonEncoder.h"
#include "core/journal/JournalStore.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WatchedThread.h"

#include <functional>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

Journal version(double number) {
    Journal journal;
    journal.lastChecked = Date{number};
    return journal;
}

/// A store in which a second thread saves version 2 when the first is about to write.
struct Contended {
    test::TemporaryFolder folder;
    bool hasSecond = false;
    JournalStore store{folder / "journal.json", folder / "old.json", std::nullopt,
                       FolderGuard([this] {
                           if (!std::exchange(hasSecond, true))
                               second.emplace([this] { save(2); }).runUntilItWaits();
                           return true;
                       })};
    std::optional<test::WatchedThread> second{};

    void save(double number) {
        Journal journal = version(number);
        store.saveWithin(largestDocument, journal);
    }
    Journal stored() {
        second.reset();
        return JournalStore(folder / "journal.json").load();
    }
};

} // namespace

TEST(JournalStoreThreads, ASaveWaitsForTheCallBefore) {
    const std::function<void(Contended&)> calls[] = {
        [](Contended& place) {
            EXPECT_EQ(place.store.load(), version(1)) << "moved from old.json";
        },
        [](Contended& place) { place.store.save(version(1)); },
        [](Contended& place) { place.save(1); },
    };
    for (const auto& call : calls) {
        Contended place;
        place.folder.write("old.json", json::encoded(version(1)));
        call(place);
        EXPECT_EQ(place.stored(), version(2)) << (&call - calls);
    }
}

TEST(JournalStoreThreads, SavesRunInTheOrderOfTheirCalls) {
    Contended place;
    place.save(1);
    place.save(3);
    EXPECT_EQ(place.stored(), version(3));
}
