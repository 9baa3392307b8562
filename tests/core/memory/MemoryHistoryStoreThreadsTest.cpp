#include "core/memory/MemoryHistoryStore.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WatchedThread.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

MemoryArchive archiveWithTheClip(const std::string& id) {
    MemoryRecord clip;
    clip.id = id;
    clip.kind = MemoryRecord::Kind::clipboard;
    clip.text = id;
    MemoryArchive archive;
    archive.records.emplace_back(std::move(clip));
    return archive;
}

} // namespace

TEST(MemoryHistoryStoreThreads, SaveDeletesNothingThatAnotherOneJustWrote) {
    const test::TemporaryFolder folder;
    const auto first = folder / ("memory-payloads/" + MemoryHistoryStore::blobName("a", ".text"));
    std::optional<test::WatchedThread> second;
    bool hasSecond = false;
    std::optional<MemoryHistoryStore> store;
    const auto loadAndSave = [&](const char* id) {
        store->load();
        store->save(archiveWithTheClip(id));
    };
    // Called before each write and each deletion. The first save is half-way when the file of its
    // clip exists.
    const auto onWrite = [&] {
        if (std::filesystem::exists(first) && !std::exchange(hasSecond, true))
            second.emplace([&] { loadAndSave("b"); }).runUntilItWaits();
        return true;
    };
    store.emplace(folder / "memory-history.json", FolderGuard(onWrite));
    loadAndSave("a");
    second.reset();
    EXPECT_EQ(MemoryHistoryStore(folder / "memory-history.json").load().records.at(0)->text, "b");
}
