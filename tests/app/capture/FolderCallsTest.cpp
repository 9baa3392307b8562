#include "app/capture/FolderCalls.h"

#include "app/capture/FolderAccess.h"
#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/TemporaryFolder.h"

#include <atomic>
#include <semaphore>
#include <thread>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using test::TemporaryFolder;

namespace {

/// A folder whose calls hang until `comesBack` is released. Shared with the hanging threads.
struct DeadVolume {
    std::counting_semaphore<> comesBack{0};
    std::counting_semaphore<> isClosed{0};
    std::atomic<int> attempts = 0;
};

struct FolderCallsTest : testing::Test {
    void allow(std::chrono::milliseconds longest) {
        auto operations = BookmarkOperations::direct();
        {
            FolderAccess adding(preferences, operations);
            test::await(adding.add({dead}, FolderGrant::suggestedPurposes));
        }
        operations.start = [volume = volume](const fs::path&) {
            ++volume->attempts;
            volume->comesBack.acquire();
            return true;
        };
        operations.stop = [volume = volume](const fs::path&) { volume->isClosed.release(); };
        access.emplace(preferences, operations, std::vector<RecommendedFolder>(),
                       FolderCalls(longest));
    }
    void expectUnavailable(const FolderCaptureAccess& capture) {
        EXPECT_EQ(capture.options.storageRoots, std::vector<fs::path>());
        EXPECT_EQ(access->accessFailure(dead), "Folder access was unavailable during the check.");
    }

    const TemporaryFolder folder;
    const fs::path dead = folder.makeFolder("dead");
    const std::shared_ptr<DeadVolume> volume = std::make_shared<DeadVolume>();
    test::MemoryPreferences preferences;
    std::optional<FolderAccess> access;
};

} // namespace

TEST_F(FolderCallsTest, AFolderThatDoesNotRespondCostsOneThread) {
    allow(1ms);
    for (int i = 0; i < 3; ++i)
        expectUnavailable(test::await(access->beginCapture(true)));
    EXPECT_LE(volume->attempts, 1) << "each attempt costs a thread";
    volume->comesBack.release();
    volume->isClosed.acquire();
    EXPECT_EQ(volume->attempts, 1) << "a folder that is opened too late is closed again";
}

TEST_F(FolderCallsTest, AStopDoesNotWaitForAFolder) {
    allow(1h);
    auto opening = access->beginCapture(true);
    while (volume->attempts == 0)
        std::this_thread::yield();
    access->stopWaiting();
    expectUnavailable(test::await(std::move(opening)));
    volume->comesBack.release();
    volume->isClosed.acquire();

    opening = access->beginCapture(true);
    access.reset();
    EXPECT_TRUE(opening.isReady());
    volume->comesBack.release();
}

TEST(FolderCalls, ReturnOrThrowTheResultOfACall) {
    const FolderCalls calls(1h);
    EXPECT_EQ(calls.answer("/a", [] { return 7; }, {}), 7);
    EXPECT_THROW(calls.answer("/a", []() -> int { throw Error("No."); }, {}), Error);
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_EQ(calls.answer("/a", [] { return 7; }, stopped.get_token()), std::nullopt);
}
