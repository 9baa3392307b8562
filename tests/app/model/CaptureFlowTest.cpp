#include "app/model/CaptureFlow.h"

#include "tests/app/support/ModelFixture.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/SharedRecords.h"

using namespace tidemark;

struct CaptureFlowTest : test::ModelFixture {
    void capture() { test::await(model->scan()); }
};

TEST_F(CaptureFlowTest, DropsATriggerWhileAnythingElseRuns) {
    start();
    {
        const auto importing = state().operations().begin(Operation::importing);
        EXPECT_TRUE(state().busy());
        test::await(model->scan(true));
        EXPECT_EQ(observations, 1);
    }
    {
        const auto managing = state().operations().begin(Operation::managingFolders);
        capture();
        EXPECT_EQ(observations, 1);
        test::await(model->scan(true));
        EXPECT_EQ(observations, 2);
    }

    holdCapture();
    EXPECT_EQ(model->recordingStatus(), "Observing…");
    EXPECT_EQ(model->menuSymbol(), "arrow.triangle.2.circlepath");
    capture();
    test::await(model->refreshIfNeeded(clock.now() + 1e6));
    clock.advance(10);
    finish();
    EXPECT_EQ(observations, 3);
}

TEST_F(CaptureFlowTest, APauseDropsTheRunningCaptureAndResumingBeginsANewBaseline) {
    start();
    applications = test::shared(test::application("Notes"));
    holdCapture();
    model->setRecordingMode(RecordingMode::paused);
    finish();
    EXPECT_EQ(snapshots(), 1U);
    EXPECT_EQ(stored().snapshots.size(), 1U);
    EXPECT_EQ(error(), "none");
    capture();
    EXPECT_EQ(observations, 2);

    restart();
    EXPECT_EQ(model->recordingStatus(), "Paused") << "a pause outlives the program";
    model->setRecordingMode(RecordingMode::recording);
    test::until([&] { return clock.sleeping() > 1; });
    clock.advance(10);
    finish();
    EXPECT_EQ(snapshots(), 2U);
    EXPECT_EQ(events(), 0U) << "what came while recording was off is no event";
    EXPECT_EQ(preferences.boolean("needsRecordingBaseline"), false);

    applications.clear();
    captureDuration = 0;
    capture();
    EXPECT_EQ(events(), 1U);
    EXPECT_EQ(live.log, "load activity memory stop load memory activity ");
}

TEST_F(CaptureFlowTest, PausingAndResumingDuringACaptureRunsAFreshOneAtItsEnd) {
    start();
    applications = test::shared(test::application("Notes"));
    holdCapture();
    model->setRecordingMode(RecordingMode::paused);
    model->setRecordingMode(RecordingMode::recording);
    EXPECT_EQ(observations, 2);
    test::until([&] { return observations == 3; });
    EXPECT_EQ(snapshots(), 1U) << "the capture of before the pause is dropped";
    clock.advance(10);
    finish();
    EXPECT_EQ(snapshots(), 2U);
    EXPECT_EQ(state().latest()->id, test::snapshot(3).id);
    EXPECT_EQ(events(), 0U);
}

TEST_F(CaptureFlowTest, APauseDuringTheSaveKeepsTheCaptureAndTheNextBaseline) {
    start();
    holdCapture();
    clock.advance(10);
    ASSERT_TRUE(state().isRunning(Operation::capturing)) << "the save has only just begun";
    model->setRecordingMode(RecordingMode::paused);
    finish();
    EXPECT_EQ(snapshots(), 2U);
    EXPECT_EQ(stored(), *state().journal());
    EXPECT_EQ(preferences.boolean("needsRecordingBaseline"), true);
}

TEST_F(CaptureFlowTest, AFailedCaptureChangesNothingAndClosesTheFolders) {
    int open = 0;
    bookmarks.start = [&](const auto&) { return ++open > 0; };
    bookmarks.stop = [&](const auto&) { --open; };
    create();
    test::await(
        model->folderAccess().add({folder.makeFolder("a")}, FolderGrant::suggestedPurposes));
    start();
    preferences.set("needsRecordingBaseline", true);
    const Journal before = *state().journal();
    fails = true;
    holdCapture();
    EXPECT_EQ(open, 1);
    EXPECT_EQ(*model->scanProgress().stage, "Observing");
    clock.advance(10);
    finish();
    EXPECT_EQ(open, 0);
    EXPECT_EQ(*model->scanProgress().stage, std::nullopt);
    EXPECT_EQ(error(), "The observation couldn’t be saved. The disk is gone.");
    EXPECT_EQ(state().journal(), before);
    EXPECT_EQ(preferences.boolean("needsRecordingBaseline"), true);

    fails = false;
    captureDuration = 0;
    applications = test::shared(test::application("Notes"));
    capture();
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(snapshots(), 2U);
    EXPECT_EQ(events(), 0U);
    EXPECT_EQ(open, 0);
}

TEST_F(CaptureFlowTest, AFailureOfADroppedCaptureIsNotTold) {
    start();
    fails = true;
    holdCapture();
    model->setRecordingMode(RecordingMode::paused);
    finish();
    EXPECT_EQ(error(), "none");
}

TEST_F(CaptureFlowTest, AJournalThatCannotBeSavedStaysAsItWas) {
    start();
    const Journal before = *state().journal();
    std::filesystem::permissions(data, std::filesystem::perms(0500));
    {
        const test::OrdinaryUser user(folder.path());
        capture();
        EXPECT_TRUE(error().starts_with("The observation couldn’t be saved. ")) << error();
        EXPECT_EQ(state().journal(), before);
        EXPECT_FALSE(test::await(model->commit(Journal())));
        EXPECT_TRUE(error().starts_with("History couldn’t be saved. ")) << error();
        EXPECT_EQ(state().journal(), before);
    }
    EXPECT_FALSE(state().busy());
    EXPECT_EQ(stored(), before);

    std::filesystem::permissions(data, std::filesystem::perms(0700));
    Journal changed = before;
    changed.lastChecked = clock.now();
    const auto committing = model->commit(changed);
    EXPECT_TRUE(state().isRunning(Operation::saving));
    model->setRecordingMode(RecordingMode::paused);
    EXPECT_TRUE(state().canRecord()) << "not while the journal is being changed";
    finish();
    EXPECT_EQ(state().journal(), changed);
    EXPECT_EQ(stored(), changed);
}

TEST_F(CaptureFlowTest, AddsWhatTheControllerAloneKnows) {
    start();
    EXPECT_EQ(state().latest()->additionalReports, std::vector<MetadataReport>());
    EXPECT_EQ(state().latest()->captureDuration, std::nullopt);
    EXPECT_EQ(state().latest()->expectedCaptureInterval, 1800);
    EXPECT_TRUE(state().latest()->operatingSystem);
    EXPECT_EQ(state().latest()->coverage.issues.size(), 2U) << "no folder is allowed yet";

    model->setCaptureSchedule(CaptureSchedule::manual);
    EXPECT_EQ(preferences.text("captureSchedule"), "manual");
    const auto file = folder.write(".zshrc", "export SECRET=1");
    preferences.set("configurationHistoryPaths",
                    std::vector<std::string>{folder / "none", folder.path(), file});
    capture();
    const Snapshot& latest = *state().latest();
    ASSERT_EQ(latest.additionalReports->size(), 3U);
    EXPECT_EQ(latest.additionalReports->at(2).items->at(0).name, "Zsh configuration");
    EXPECT_EQ(latest.coverage.issues.at(0), latest.additionalReports->at(1).issue);
    EXPECT_EQ(latest.coverage.issues.size(), 3U);
    EXPECT_TRUE(latest.captureDuration);
    EXPECT_EQ(latest.expectedCaptureInterval, std::nullopt);
}

TEST_F(CaptureFlowTest, TheControllerMayGoInTheMiddleOfACapture) {
    start();
    holdCapture();
    model.reset();
    EXPECT_TRUE(holding.isReady());
    EXPECT_EQ(stored().snapshots.size(), 1U) << "a capture that was cut short is not kept";

    create();
    holding = model->start();
    model.reset();
    EXPECT_TRUE(holding.isReady());
}
