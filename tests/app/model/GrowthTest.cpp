#include "app/model/BackgroundItemNotices.h"
#include "app/model/DigestCard.h"
#include "app/model/GrowthScreen.h"
#include "app/model/StorageHistoryKeeper.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/growth/DigestText.h"
#include "tests/app/support/ModelFixture.h"
#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/Contains.h"
#include "tests/support/HistoryEvents.h"

using namespace tidemark;
using test::day;
using test::downloads;
using test::hour;
using test::sized;

namespace {

/// Notifications that are only remembered.
struct Remembered final : DesktopNotifications {
    explicit Remembered(std::vector<Notification>& shown) : shown(shown) {}
    void show(Notification notification) override { shown.push_back(std::move(notification)); }

    std::vector<Notification>& shown;
};

struct GrowthTest : test::ModelFixture {
    double now() { return clock.now().secondsSince2001; }
    std::filesystem::path document() const { return data / "storage-history.json"; }
    std::optional<StorageHistory> storedSizes() const {
        return StorageHistoryStore::read(document());
    }
    /// The number of points in all series.
    std::size_t points() {
        std::size_t count = 0;
        for (const auto& series : model->dailySizes().history()->series)
            count += series->bytes.size();
        return count;
    }
    void storeJournal(std::vector<Snapshot> snapshots) {
        Journal journal;
        journal.snapshots = test::shared(std::move(snapshots));
        JournalStore(data / "journal.json").save(journal);
    }
    void add(Snapshot snapshot, std::vector<Event> events = {}) {
        Journal next = *state().journal();
        next.snapshots.emplace_back(std::move(snapshot));
        for (auto& event : events)
            next.events.emplace_back(std::move(event));
        state().setJournal(std::move(next));
        test::settle();
    }
    std::string runs() const {
        std::string text;
        for (const auto& run : RecorderRuns::read(data / "recorder-runs.json"))
            text += std::string(rawValue(run.kind)) + " ";
        return text;
    }
};

} // namespace

TEST_F(GrowthTest, FillsDailySizesFromTheJournalAndAddsEachCapture) {
    storeJournal({sized(now() - 3 * day, 7, {{downloads, {{"a", 1}}}}), sized(now() - 2 * day, 8)});
    start();
    finish();
    test::until([&] { return storedSizes().has_value(); });
    const auto before = points();
    EXPECT_EQ(before, 4U) << "free space of two days, a folder and its child";
    EXPECT_EQ(test::modeOf(document()), 0600U);
    add(sized(now() - day, 9));
    test::until([&] { return points() == before + 1; });
    EXPECT_EQ(*storedSizes(), *model->dailySizes().history());

    // Without the snapshots, the daily sizes are still there.
    std::filesystem::remove(data / "journal.json");
    restart();
    EXPECT_EQ(points(), before + 1);
}

TEST_F(GrowthTest, DoesNotReplaceDailySizesThatItCantRead) {
    storeJournal({sized(now() - day, 7)});
    const std::string damaged = R"({"schemaVersion":1,"series":[)";
    folder.write("Tidemark/storage-history.json", damaged);
    start();
    finish();
    ASSERT_TRUE(model->dailySizes().problem());
    EXPECT_TRUE(test::contains(*model->dailySizes().problem(), "storage-history.json"));
    add(sized(now(), 9));
    finish();
    EXPECT_EQ(test::contents(document()), damaged);
    EXPECT_EQ(error(), "none") << "the history itself goes on";
}

TEST_F(GrowthTest, ShowsTheWholeLengthOfAGapThatBeganEarlier) {
    storeJournal({sized(now() - 9 * day, 7), sized(now() - 8 * day, 7), sized(now() - day, 7)});
    start();
    finish();
    const auto gaps = model->growth().gaps(clock.now() + -2 * day);
    ASSERT_FALSE(gaps.empty());
    EXPECT_EQ(gaps.back().title, "Nothing observed for 7 days");
}

TEST_F(GrowthTest, WritesNothingToAFolderThatIsNotItsOwn) {
    storeJournal({sized(now() - day, 7)});
    ownsFolder = [] { return false; };
    create();
    test::await(model->start());
    EXPECT_FALSE(std::filesystem::exists(document()));
    EXPECT_FALSE(std::filesystem::exists(data / "recorder-runs.json"));
}

TEST_F(GrowthTest, RecordsWhenItRanAndWasPaused) {
    start();
    finish();
    model->setRecordingMode(RecordingMode::paused);
    test::settle();
    model->setRecordingMode(RecordingMode::recording);
    finish();
    model->stopAutomaticCaptures();
    const std::string expected = "started running paused resumed running stopped ";
    test::until([&] { return runs() == expected; });
    EXPECT_EQ(runs(), expected);
    // A command that only reads the history does not count as a run.
    create();
    test::await(model->openHistory());
    EXPECT_EQ(model->recorderRuns().records().size(), 6U);
    EXPECT_EQ(runs(), expected);
}

TEST_F(GrowthTest, RecordsAPauseThatBeganOrEndedWhileTheRecorderDidNotRun) {
    start();
    finish();
    model->setRecordingMode(RecordingMode::paused);
    test::settle();
    preferences.set(preferenceKeys::recordingMode.name, "recording");
    restart();
    EXPECT_FALSE(isPaused(model->recorderRuns().records()));
    preferences.set(preferenceKeys::recordingMode.name, "paused");
    restart();
    EXPECT_TRUE(isPaused(model->recorderRuns().records()));
}

TEST_F(GrowthTest, StartsNothingWhenItIsEndedDuringTheStart) {
    create();
    // This signal is emitted after the history was read, while the records of runs are being read.
    QObject::connect(
        &*model, &AppModel::readingEnded, &*model, [this] { model->stopAutomaticCaptures(); },
        Qt::SingleShotConnection);
    start();
    finish();
    EXPECT_FALSE(test::contains(live.log, "activity")) << live.log;
    EXPECT_EQ(runs(), "");
}

TEST_F(GrowthTest, MakesAChartForEachChoiceAndAfterEachCapture) {
    storeJournal({sized(now() - 2 * day, 7, {{downloads, {{"a", 1}}}}),
                  sized(now() - hour, 8, {{downloads, {{"a", 5}}}})});
    start();
    finish();
    auto& screen = model->growth();
    EXPECT_EQ(screen.content(), nullptr);
    const auto made = [&] {
        screen.content();
        test::until([&] { return !screen.isPreparing(); });
        return screen.content();
    };
    const auto first = made();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->subjects.size(), 2U);
    EXPECT_EQ(first->chart.points.size(), 2U);
    EXPECT_EQ(screen.content(), first) << "made once";
    const auto span = screen.span();
    screen.choose(downloads);
    screen.setSpan(GrowthSpan::day);
    EXPECT_EQ(screen.content(), first) << "until the other one is ready";
    screen.choose("");
    screen.setSpan(span);
    EXPECT_EQ(screen.content(), first);
    EXPECT_EQ(made(), first) << "the other one is not prepared any more";
    screen.choose(downloads);
    screen.setSpan(GrowthSpan::day);
    EXPECT_EQ(made()->chart.points.size(), 1U);
    EXPECT_EQ(made()->chart.subject.path, downloads);
    EXPECT_EQ(made()->growth.monitoredChange, 4) << "from the last size before the period";
    add(sized(now() - hour / 2, 8, {{downloads, {{"a", 9}}}}));
    EXPECT_EQ(made()->chart.points.size(), 2U);
    // For a folder without any size, the chart shows free space instead.
    screen.choose("/elsewhere");
    EXPECT_EQ(made()->chart.subject.path, "");
}

TEST_F(GrowthTest, ShowsACardAfterADay) {
    storeJournal({sized(now(), 7)});
    start();
    finish();
    auto& card = model->digest();
    card.windowShown();
    EXPECT_FALSE(card.shown()) << "the first time";
    clock.advance(DigestCard::leastAbsence - 10);
    card.windowHidden();
    clock.advance(DigestCard::leastAbsence - 10);
    card.windowShown();
    EXPECT_FALSE(card.shown());
    card.windowHidden();
    clock.advance(DigestCard::leastAbsence);
    add(sized(now(), 7), {test::event("app", now())});
    card.windowShown();
    ASSERT_TRUE(card.shown());
    EXPECT_EQ(digestText::counts(*card.shown()), "Applications 1");
    card.dismiss();
    EXPECT_FALSE(card.shown());
    card.windowShown();
    EXPECT_FALSE(card.shown()) << "it was seen a moment ago";
}

TEST_F(GrowthTest, NotifiesOnceAboutTheNewBackgroundItemsOfACapture) {
    start();
    finish();
    std::vector<DesktopNotifications::Notification> shown;
    std::string opened;
    const BackgroundItemNotices notices(
        state(), preferences, [&] { return std::make_unique<Remembered>(shown); },
        [&](const std::string& id) { return [&opened, id] { opened = id; }; });
    const auto found = [&](const std::string& id) {
        Event event = test::event(id, now(), EventCategory::background);
        event.changes.push_back(change::BackgroundAdded{{Shared(test::agent(id))}});
        return event;
    };
    add(sized(now(), 7), {found("before")});
    EXPECT_TRUE(shown.empty()) << "the setting is off";
    preferences.set(preferenceKeys::backgroundItemNotices.name, true);
    test::settle();
    add(sized(now() + 1, 7), {found("one"), found("two")});
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].title, "2 new background items");
    shown[0].activated();
    EXPECT_EQ(opened, "one");
    add(sized(now() + 2, 7), {test::event("app", now())});
    state().noteChange();
    test::settle();
    EXPECT_EQ(shown.size(), 1U);
}
