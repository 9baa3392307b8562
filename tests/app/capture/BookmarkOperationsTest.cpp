#include "app/capture/BookmarkOperations.h"

#include "tests/support/TemporaryFolder.h"

#include <thread>

#include <gtest/gtest.h>

#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>

using namespace tidemark;
namespace fs = std::filesystem;
using test::TemporaryFolder;

TEST(BookmarkOperations, DistinguishesAVolumeFromItsEmptyMountPoint) {
    const TemporaryFolder folder;
    const auto place = folder.makeFolder("place");
    const auto operations = BookmarkOperations::direct();
    bool canMount = false;
    // A separate thread, so that its mounts are not visible to others.
    std::thread([&] {
        canMount = ::unshare(CLONE_NEWNS) == 0
                   && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
                   && ::mount("tidemark", place.c_str(), "tmpfs", 0, nullptr) == 0;
        if (!canMount)
            return;
        const Data bookmark = operations.create(place);
        EXPECT_EQ(operations.resolve(bookmark).failure, std::nullopt);
        ::umount(place.c_str());
        EXPECT_EQ(operations.resolve(bookmark).failure, "Folder does not currently exist.");
        EXPECT_EQ(bookmarkAccessFailure(operations, bookmark), "Folder does not currently exist.");

        // The bind mount has another device number than before, as a volume may after a restart of
        // the machine.
        fs::create_directory(folder / "volume");
        ::mount((folder / "volume").c_str(), place.c_str(), nullptr, MS_BIND, nullptr);
        EXPECT_EQ(operations.resolve(bookmark).failure, std::nullopt);
        EXPECT_TRUE(operations.resolve(bookmark).stale);
        EXPECT_EQ(bookmarkAccessFailure(operations, bookmark), std::nullopt);
        ::umount(place.c_str());
    }).join();
    if (!canMount)
        GTEST_SKIP() << "only root may mount";
}
#endif
