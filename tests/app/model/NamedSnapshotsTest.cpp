#include "app/model/NamedSnapshots.h"

#include "tests/app/support/ModelFixture.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/SharedRecords.h"

using namespace tidemark;

struct NamedSnapshotsTest : test::ModelFixture {
    NamedSnapshots& named() { return model->snapshots(); }
    void begin() { test::await(named().beginSavedSnapshot()); }
    bool save(const char* name) { return test::await(named().saveNamedSnapshot(name)); }
    std::string failure() { return named().snapshotError->value_or("none"); }
    bool isNaming() { return state().isRunning(Operation::naming); }
    bool hasDraft() { return named().snapshotDraft->has_value(); }
    const std::vector<Baseline>& baselines() { return state().journal()->baselines; }
};

TEST_F(NamedSnapshotsTest, SavesANewCaptureUnderAName) {
    start();
    applications = test::shared(test::application("Lantern"));
    captureDuration = 10;
    const auto beginning = named().beginSavedSnapshot();
    test::until([&] { return clock.sleeping() > 1; });
    EXPECT_TRUE(isNaming() && state().isRunning(Operation::drafting));
    clock.advance(10);
    test::until([&] { return beginning.isReady(); });
    EXPECT_FALSE(state().isRunning(Operation::drafting));
    ASSERT_TRUE(hasDraft());
    EXPECT_EQ(snapshots(), 1U) << "not saved yet";
    test::await(model->scan());
    EXPECT_EQ(observations, 2);

    EXPECT_FALSE(save(" \n "));
    EXPECT_TRUE(hasDraft() && isNaming());
    const std::string name(100, 'n');
    const auto saving = named().saveNamedSnapshot("\n " + name + " ");
    EXPECT_TRUE(state().isRunning(Operation::savingDraft));
    test::until([&] { return saving.isReady(); });
    ASSERT_EQ(baselines().size(), 1U);
    EXPECT_EQ(baselines()[0].name, name.substr(0, 80));
    EXPECT_EQ(baselines()[0].snapshot, state().journal()->snapshots.back());
    EXPECT_EQ(events(), 1U) << "the draft is compared like any capture";
    EXPECT_EQ(stored(), *state().journal());
    EXPECT_FALSE(hasDraft() || state().busy());
    EXPECT_EQ(model->history().place().snapshot(), baselines()[0].id);
    EXPECT_EQ(model->history().place().workspace(), WorkspaceDestination::snapshots);
}

TEST_F(NamedSnapshotsTest, ObserversSeeNoHalfSavedState) {
    start();
    begin();
    test::settle();
    std::string seen;
    const auto look = [&] {
        const bool isKept = !baselines().empty();
        const bool isShown = model->history().place().snapshot().has_value();
        seen += isKept && isShown && !hasDraft() && !isNaming() ? "after "
                : !isKept && !isShown && hasDraft()             ? "before "
                                                                : "between ";
    };
    for (Observable* each :
         std::initializer_list<Observable*>{&state(), &named(), &model->history()})
        QObject::connect(each, &Observable::changed, look);
    ASSERT_TRUE(save("Name"));
    test::settle();
    EXPECT_EQ(seen, "before after after after ")
        << "each object once at the end, and the state once while saving";
}

TEST_F(NamedSnapshotsTest, AFailedCaptureCanBeTriedAgain) {
    start();
    fails = true;
    begin();
    EXPECT_EQ(failure(), "Couldn’t capture a fresh snapshot. The disk is gone.");
    EXPECT_EQ(error(), "none");
    EXPECT_TRUE(isNaming() && !state().isRunning(Operation::drafting));
    EXPECT_FALSE(save("Name"));
    fails = false;
    test::await(named().prepareSnapshotDraft());
    EXPECT_EQ(failure(), "none");
    preferences.set("needsRecordingBaseline", true);
    EXPECT_TRUE(save("Name"));
    EXPECT_EQ(preferences.boolean("needsRecordingBaseline"), false);
}

TEST_F(NamedSnapshotsTest, AFailedSaveKeepsTheDraftAndTheJournal) {
    start();
    begin();
    const Journal before = *state().journal();
    std::filesystem::permissions(data, std::filesystem::perms(0500));
    {
        const test::OrdinaryUser user(folder.path());
        EXPECT_FALSE(save("Name"));
    }
    std::filesystem::permissions(data, std::filesystem::perms(0700));
    EXPECT_TRUE(failure().starts_with("The snapshot couldn’t be saved. ")) << failure();
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(state().journal(), before);
    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(hasDraft() && !state().isRunning(Operation::savingDraft));
    EXPECT_TRUE(save("Name"));
}

TEST_F(NamedSnapshotsTest, OperationsEndAfterAnyException) {
    start();
    const std::function<bool()> operations[] = {
        [this] { return (test::await(model->scan()), true); },
        [this] { return test::await(model->commit(*state().journal())); },
        [this] {
            if (!hasDraft())
                begin();
            return save("Name");
        },
    };
    for (const auto& operation : operations) {
        // This is no `std::exception`, so no handler turns it into a message.
        ownsFolder = []() -> bool { throw 1; };
        EXPECT_THROW(operation(), int);
        EXPECT_FALSE(state().isAnyRunning(exclusions::captures.with(exclusions::saves)));
        ownsFolder = [] { return true; };
        EXPECT_TRUE(operation());
    }
}

TEST_F(NamedSnapshotsTest, DropsACaptureThatWasCancelledWhileRunning) {
    start();
    for (const bool failing : {false, true}) {
        fails = failing;
        captureDuration = 10;
        const auto beginning = named().beginSavedSnapshot();
        test::until([&] { return clock.sleeping() > 1; });
        named().cancelSavedSnapshot();
        EXPECT_TRUE(state().busy()) << "the capture is still running";
        clock.advance(10);
        test::until([&] { return beginning.isReady(); });
        EXPECT_FALSE(hasDraft() || state().busy());
        EXPECT_EQ(failure(), "none");
    }
    fails = false;
    const auto beginning = named().beginSavedSnapshot();
    test::until([&] { return clock.sleeping() > 1; });
    model.reset();
    EXPECT_TRUE(beginning.isReady());
}

TEST_F(NamedSnapshotsTest, DeletesTheBaselineAndKeepsTheSnapshot) {
    start();
    for (const char* name : {"One", "Two"}) {
        begin();
        ASSERT_TRUE(save(name));
    }
    const Uuid one = baselines()[0].id;
    const Uuid two = baselines()[1].id;
    const auto removed = [&](const Uuid& id) { return test::await(named().deleteSnapshot(id)); };
    EXPECT_FALSE(removed(Uuid::random()));
    {
        const auto capturing = state().operations().begin(Operation::capturing);
        EXPECT_FALSE(removed(one));
    }
    EXPECT_TRUE(removed(one));
    EXPECT_EQ(model->history().place().snapshot(), two);
    EXPECT_TRUE(removed(two));
    EXPECT_EQ(model->history().place().snapshot(), std::nullopt);
    EXPECT_EQ(snapshots(), 3U);
    EXPECT_TRUE(stored().baselines.empty());
    EXPECT_EQ(stored(), *state().journal());
}
