#include "core/base/Error.h"
#include "core/storage/ComponentStorageScanner.h"
#include "tests/support/ManualClock.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WatchedThread.h"

#include <gtest/gtest.h>

using namespace tidemark;

/// Makes each call on another thread during a pause of a measurement, in which the lock is
/// released, so that ThreadSanitizer can find data races.
TEST(ScannerThreads, AllowsEachCallDuringAMeasurement) {
    const test::TemporaryFolder folder;
    folder.write("sub/one", "1");
    folder.write("sub/two", "22");
    using Call = std::function<void(ComponentStorageScanner&)>;
    const Call calls[] = {
        [](auto& scanner) { scanner.beginCapture(); },
        [](auto& scanner) { scanner.retainCursors({}); },
        [&](auto& scanner) { scanner.collectFolder(folder.path(), 1); },
        [](auto& scanner) { scanner.collect({}, 1, 0); },
        [](auto& scanner) { scanner.endCapture(); },
        [](auto& scanner) { scanner.save(); },
    };
    const auto item = StorageMeasurementItem::directory(folder / "sub", Date{1});
    for (const auto& call : calls) {
        // A pause, in which the lock is released, after every step of the walk.
        test::ManualClock clock(1);
        ComponentStorageScanner scanner(folder / "records.json", 1'000'000, clock);
        std::optional<test::WatchedThread> other;
        clock.onPause = [&] {
            if (other)
                return;
            other
                .emplace([&] {
                    try {
                        call(scanner);
                    } catch (const Error&) {
                        // Another measurement is running.
                    }
                })
                .runUntilItWaits();
        };
        EXPECT_EQ(scanner.collect({item}, 1000, 0).records.at(0)->bytes, 3);
        EXPECT_TRUE(other);
    }
}
