#include "core/activity/SystemActivityStore.h"

#include "core/base/Files.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "tests/support/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::contents;

namespace {

/// A wake at each second from `first` on.
std::vector<SystemActivity> wakes(std::size_t count, double first = 0) {
    std::vector<SystemActivity> records;
    for (std::size_t i = 0; i < count; ++i)
        records.push_back(SystemActivity::observed(SystemActivity::Kind::woke,
                                                   Date{first + static_cast<double>(i)}));
    return records;
}

std::string failureOf(const std::filesystem::path& file) {
    return test::failureOf([&] { SystemActivityStore::read(file); });
}

} // namespace

TEST(SystemActivityStore, WritesAPrivateCompactArray) {
    const test::TemporaryFolder folder;
    const auto file = folder / "deep/data/system-activity.json";
    SystemActivityStore store(file);
    store.load();
    EXPECT_TRUE(store.records().empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "deep"));

    auto activity = wakes(1, 0.5).front();
    activity.id = *Uuid::parse("0A000000-0000-4000-8000-00000000000b");
    store.append(activity);
    EXPECT_EQ(contents(file), R"([{"id":"0A000000-0000-4000-8000-00000000000B","timestamp":0.5,)"
                              R"("kind":"woke"}])");
    EXPECT_EQ(test::modeOf(file), 0600U);
    EXPECT_EQ(test::modeOf(folder / "deep/data"), 0700U);
    EXPECT_EQ(test::modeOf(folder / "deep"), 0700U);

    std::filesystem::permissions(file, std::filesystem::perms(0644));
    store.append(activity);
    EXPECT_EQ(test::modeOf(file), 0600U);
    EXPECT_EQ(SystemActivityStore::read(file).size(), 2U);
}

TEST(SystemActivityStore, KeepsTheNewestRecords) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("system-activity.json", json::encoded(wakes(2500)));
    const std::string before = contents(file);
    SystemActivityStore store(file);
    store.load();
    ASSERT_EQ(store.records().size(), 2000U);
    EXPECT_EQ(store.records().front()->timestamp, Date{500});
    EXPECT_EQ(contents(file), before);

    const auto shown = store.records();
    store.append(wakes(1, 9000).front());
    EXPECT_EQ(store.records().size(), 2000U);
    EXPECT_EQ(store.records().front()->timestamp, Date{501});
    EXPECT_EQ(store.records().back()->timestamp, Date{9000});
    EXPECT_TRUE(store.records().front().sameObject(shown[1])) << "a copy of each record";
    EXPECT_EQ(SystemActivityStore::read(file), store.records());
}

TEST(SystemActivityStore, LeavesAnUnreadableFileUnchanged) {
    const test::TemporaryFolder folder;
    const std::string good = json::encoded(wakes(2));
    const std::string texts[] = {
        "",
        "{}",
        good.substr(0, good.size() / 2),
        R"([{"id":"0A000000-0000-4000-8000-00000000000B","timestamp":1,"kind":"teleported"}])",
    };
    for (const auto& text : texts) {
        const auto file = folder.write("damaged.json", text);
        EXPECT_TRUE(failureOf(file).starts_with(file.native() + " could not be read: ")) << text;
        EXPECT_EQ(contents(file), text);
    }
}
