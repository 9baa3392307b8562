#include "core/base/Error.h"
#include "core/storage/ComponentStorageScanner.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WatchedThread.h"

#include <gtest/gtest.h>

using namespace tidemark;

/// For ThreadSanitizer: each call while a measurement has released the lock.
TEST(ScannerThreads, AllowsEachCallDuringAMeasurement) {
    const test::TemporaryFolder folder;
    const auto sub = folder.makeFolder("sub");
    ComponentStorageScanner scanner(folder / "records.json", 1'000'000);
    const std::function<void()> calls[] = {
        [&] { scanner.beginCapture(); },
        [&] { scanner.retainCursors({}); },
        [&] { scanner.collectFolder(folder.path(), 1); },
        [&] { scanner.collect({}, 1, 0); },
        [&] { scanner.endCapture(); },
        [&] { scanner.save(); },
    };
    const auto item = StorageMeasurementItem::directory(sub, Date{1});
    for (const auto& call : calls) {
        std::optional<test::WatchedThread> other;
        const auto measure = [&](const std::filesystem::path&, double) {
            other
                .emplace([&] {
                    try {
                        call();
                    } catch (const Error&) {
                        // Another measurement is running.
                    }
                })
                .runUntilItWaits();
            return ComponentStorageScanner::Measurement(FolderSize());
        };
        EXPECT_EQ(scanner.collect({item}, 1000, 0, measure).records.at(0)->bytes, 0);
    }
}
