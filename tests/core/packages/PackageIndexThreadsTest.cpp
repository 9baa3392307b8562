#include "core/packages/PackageIndex.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WatchedThread.h"

#include <atomic>
#include <optional>
#include <tuple>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(PackageIndexThreads, AReadingWaitsForTheOneBefore) {
    const test::TemporaryFolder root;
    const auto machine = MachineFiles::below(root.path());
    PackageIndex index;
    std::atomic<bool> hasRead = false;
    std::optional<test::WatchedThread> second;
    {
        const auto reading = index.read(machine, {"/usr/share/applications"});
        second
            .emplace([&] {
                std::ignore = index.read(machine, {"/usr/lib"}).owner("/usr/lib/a");
                hasRead = true;
            })
            .runUntilItWaits();
        EXPECT_FALSE(hasRead);
    }
    second.reset();
    EXPECT_TRUE(hasRead);
}
