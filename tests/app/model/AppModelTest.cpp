#include "app/model/AppModel.h"

#include "core/base/Files.h"
#include "core/base/JsonEncoder.h"
#include "tests/app/support/ModelFixture.h"
#include "tests/support/SharedRecords.h"

#include <future>

using namespace tidemark;

struct AppModelTest : test::ModelFixture {};

TEST_F(AppModelTest, TheFirstStartCapturesAtOnceAndLaterOnesBySchedule) {
    preferences.set("captureSchedule", std::string("manual"));
    create();
    EXPECT_EQ(model->recordingStatus(), "Starting…");
    EXPECT_TRUE(state().busy());
    start();
    EXPECT_EQ(snapshots(), 1U);
    EXPECT_EQ(stored(), *state().journal());
    EXPECT_EQ(model->recordingStatus(), "Recording");
    EXPECT_EQ(model->nextAutomaticCapture(), std::nullopt);
    EXPECT_FALSE(state().busy());

    clock.advance(1e6);
    restart();
    EXPECT_EQ(observations, 1);
    model->setCaptureSchedule(CaptureSchedule::daily);
    restart();
    EXPECT_EQ(observations, 2);
    EXPECT_EQ(model->nextAutomaticCapture(), clock.now() + 86'400);
    restart();
    EXPECT_EQ(observations, 2);
    EXPECT_EQ(snapshots(), 2U);
}

TEST_F(AppModelTest, ASecondStartDoesNothing) {
    const auto first = model->start();
    const auto second = model->start();
    EXPECT_TRUE(second.isReady());
    test::until([&] { return first.isReady(); });
    start();
    EXPECT_EQ(live.log, "load activity memory ");
    EXPECT_EQ(observations, 1);
}

TEST_F(AppModelTest, WhatNeedsTheHistoryWaitsUntilItHasBeenRead) {
    const auto reading = model->historyRead();
    EXPECT_FALSE(reading.isReady());
    const auto started = model->start();
    test::until([&] { return reading.isReady(); });
    EXPECT_TRUE(state().loaded());
    test::until([&] { return started.isReady(); });
    EXPECT_TRUE(model->historyRead().isReady());

    create();
    const auto abandoned = model->historyRead();
    model.reset();
    EXPECT_TRUE(abandoned.isReady());
}

TEST_F(AppModelTest, StartForOneCaptureStartsNoLiveService) {
    test::await(model->startForOneCapture());
    EXPECT_EQ(observations, 1);
    EXPECT_EQ(live.log, "load ");
    clock.advance(86'400);
    finish();
    EXPECT_EQ(observations, 1) << "no schedule was started";
}

TEST_F(AppModelTest, DoesNotOverwriteAnUnreadableHistoryAndTriesAgain) {
    const std::string damage = "{\"schemaVersion\":1,\"snapshots\":[";
    const auto file = folder.write("Tidemark/journal.json", damage);
    const auto reading = model->historyRead();
    start();
    test::until([&] { return reading.isReady(); });
    EXPECT_TRUE(model->historyRead().isReady());
    EXPECT_TRUE(error().starts_with("Tidemark couldn’t read its history. Your existing file has "
                                    "not been overwritten. "));
    EXPECT_TRUE(state().busy());
    EXPECT_EQ(model->menuSymbol(), "exclamationmark.circle");
    model->setRecordingMode(RecordingMode::paused);
    EXPECT_EQ(model->recordingStatus(), "Starting…");
    test::await(model->scan());
    clock.advance(60);
    finish();
    EXPECT_EQ(observations, 0);
    EXPECT_EQ(test::contents(file), damage);
    EXPECT_EQ(test::namesIn(data), "journal.json");

    std::filesystem::remove(file);
    clock.advance(60);
    test::until([&] { return snapshots() == 1; });
    finish();
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(stored(), *state().journal());
}

TEST_F(AppModelTest, StartsNothingWithAnUnreadableMemoryHistory) {
    live.fails = true;
    start();
    EXPECT_TRUE(error().ends_with("The memory can't be read."));
    EXPECT_FALSE(state().loaded());
    EXPECT_EQ(live.log, "load ");
    live.fails = false;
    workspace.post(notification::didWake);
    test::until([&] { return snapshots() == 1; });
    finish();
}

TEST_F(AppModelTest, CapturesNothingBeforeTheFolderSetupIsCompleted) {
    start();
    for (const bool pending : {false, true}) {
        preferences.set("folderSetupCompleted", pending);
        preferences.set("diskAccessSetupPending", pending);
        clock.advance(86'400);
        finish();
        const int before = observations;
        restart();
        EXPECT_TRUE(state().isRunning(Operation::choosingFolders));
        clock.advance(60);
        finish();
        EXPECT_EQ(observations, before);
    }
}

TEST_F(AppModelTest, CapturesAfterAChoiceOfFoldersThatChangedSomething) {
    start();
    const auto choose = [this](const auto& change) {
        const int before = observations;
        model->beginFolderManagement();
        EXPECT_TRUE(state().busy());
        test::await(model->scan());
        EXPECT_EQ(observations, before) << "not while the user chooses";
        change();
        model->beginFolderManagement();
        test::await(model->finishFolderManagement());
        EXPECT_FALSE(state().busy());
        return observations - before;
    };
    const auto add = [&] {
        test::await(model->folderAccess().add({folder.makeFolder("place")},
                                              FolderGrant::suggestedPurposes));
    };
    EXPECT_EQ(choose([] {}), 0);
    EXPECT_EQ(choose(add), 1);
    EXPECT_EQ(lastOptions.storageRoots, std::vector{folder / "place"});
    EXPECT_EQ(choose(add), 0);
    preferences.set("folderSetupCompleted", false);
    EXPECT_EQ(choose([] {}), 1);
    EXPECT_EQ(preferences.boolean("folderSetupCompleted"), true);
}

TEST_F(AppModelTest, ChecksForNewFolderAccessAtStartAndOnActivation) {
    start();
    folder.makeFolder(".Trash");
    preferences.set("diskAccessCheckRequested", true);
    restart();
    EXPECT_EQ(observations, 2) << "a capture with the Trash";
    EXPECT_EQ(lastOptions.storageRoots, std::vector{folder / ".Trash"});
    EXPECT_EQ(preferences.boolean("diskAccessCheckRequested"), false);

    const auto check = [](const std::filesystem::path&) { return true; };
    test::await(model->resumePermissionSetupOnActivation(check));
    EXPECT_FALSE(state().isRunning(Operation::choosingFolders)) << "without a request";
    preferences.set("diskAccessCheckRequested", true);
    holdCapture();
    test::await(model->resumePermissionSetupOnActivation(check));
    EXPECT_EQ(preferences.boolean("diskAccessCheckRequested"), true);
    clock.advance(10);
    finish();
    const auto checking = model->resumePermissionSetupOnActivation(check);
    EXPECT_TRUE(state().isRunning(Operation::checkingAfterReturn));
    test::until([&] { return checking.isReady(); });
    EXPECT_TRUE(state().isRunning(Operation::choosingFolders));
    EXPECT_EQ(preferences.boolean("diskAccessCheckRequested"), false);
}

TEST_F(AppModelTest, ChecksAccessWhenTheUserReturnsFromTheSystemSettings) {
    start();
    std::vector<std::string> locations;
    model->openDiskAccessPane([&](const std::string& location) {
        locations.push_back(location);
        return false;
    });
    EXPECT_EQ(locations.size(), 2U);
    EXPECT_EQ(locations.back(), "/System/Applications/System Settings.app");
    EXPECT_EQ(preferences.boolean("diskAccessSetupPending"), true);
    EXPECT_EQ(preferences.boolean("diskAccessCheckRequested"), true);

    folder.makeFolder(".Trash");
    application.post(notification::applicationDidBecomeActive);
    test::until([&] { return state().isRunning(Operation::choosingFolders); });
    EXPECT_EQ(preferences.boolean("diskAccessCheckRequested"), false);
    EXPECT_EQ(model->folderAccess().grants().size(), 1U);
}

TEST_F(AppModelTest, TakesOneCaptureForAllThatWereMissed) {
    start();
    clock.advance(1740);
    finish();
    EXPECT_EQ(observations, 1);
    clock.advance(60);
    finish();
    EXPECT_EQ(observations, 2);
    clock.suspend(7 * 86'400);
    workspace.post(notification::didWake);
    finish();
    clock.advance(60);
    finish();
    EXPECT_EQ(observations, 3);

    model->stopAutomaticCaptures();
    clock.suspend(86'400);
    clock.advance(600);
    workspace.post(notification::didWake);
    finish();
    EXPECT_EQ(observations, 3);
    EXPECT_EQ(live.log, "load activity memory stop ");
    for (const auto mode : {RecordingMode::paused, RecordingMode::recording})
        model->setRecordingMode(mode);
    finish();
    EXPECT_EQ(observations, 3);
    EXPECT_EQ(live.log, "load activity memory stop stop ")
        << "nothing is started after stopAutomaticCaptures";
}

TEST_F(AppModelTest, CapturesAndKeepsHistoryWhenTheClockJumps) {
    constexpr double day = 86'400;
    start();
    clock.suspend(-day);
    clock.advance(3600);
    finish();
    EXPECT_EQ(observations, 2)
        << "the next capture does not wait for the time of one in the future";
    applications = test::shared(test::application("Notes"));
    test::await(model->scan());
    EXPECT_EQ(events(), 1U);
    clock.advance(1800);
    finish();
    EXPECT_EQ(observations, 4) << "due after the last capture, not after the latest time";

    clock.suspend(365 * day);
    clock.advance(120);
    finish();
    EXPECT_EQ(observations, 5);
    ASSERT_EQ(events(), 2U);
    EXPECT_EQ(state().journal()->events[1]->title, "Captures Resumed");
    EXPECT_EQ(stored(), *state().journal());
}

TEST_F(AppModelTest, StopDuringStartStartsNothingMore) {
    const auto starting = model->start();
    const auto reading = model->historyRead();
    model->stopAutomaticCaptures();
    test::until([&] { return starting.isReady(); });
    EXPECT_TRUE(reading.isReady());
    EXPECT_TRUE(model->historyRead().isReady());
    EXPECT_EQ(live.log.find("activity"), std::string::npos);
    EXPECT_EQ(observations, 0);
}

TEST_F(AppModelTest, StartAfterStopStartsNothing) {
    model->stopAutomaticCaptures();
    start();
    EXPECT_EQ(live.log, "stop ");
    EXPECT_EQ(observations, 0);
}

TEST_F(AppModelTest, AScheduleThatCannotBeStoredIsNotUsed) {
    preferences.refuses = true;
    EXPECT_FALSE(model->setCaptureSchedule(CaptureSchedule::daily));
    EXPECT_EQ(state().captureSchedule(), CaptureSchedule::halfHourly);
}

TEST_F(AppModelTest, StopDuringACaptureDropsIt) {
    start();
    const auto kept = snapshots();
    captureDuration = 3600;
    holding = model->scan();
    test::until([&] { return clock.sleeping() > 1; });
    model->stopAutomaticCaptures();
    finish();
    EXPECT_TRUE(holding.isReady());
    EXPECT_EQ(snapshots(), kept);
    EXPECT_EQ(error(), "none");
    test::await(model->scan());
    EXPECT_EQ(observations, 2);
}

TEST_F(AppModelTest, StopDuringTheInitialImportTakesNoCapture) {
    std::promise<void> readingEnds;
    int capturesBefore = -1;
    installations = [&](Date) {
        capturesBefore = observations;
        readingEnds.get_future().wait();
        return InstallationPreview{};
    };
    create();
    const auto starting = model->start();
    test::until([&] { return *model->imports().isImportingInitialHistory; });
    model->stopAutomaticCaptures();
    readingEnds.set_value();
    test::until([&] { return starting.isReady(); });
    EXPECT_EQ(capturesBefore, 0);
    EXPECT_EQ(observations, 0);
}

TEST_F(AppModelTest, ResumeDuringTheReadOfStoredActivityKeepsNewerRecords) {
    preferences.set("recordingMode", std::string("paused"));
    createPrivateFolders(data);
    replaceFile(data / "system-activity.json", "[]");
    const auto starting = model->start();
    test::until([&] { return state().loaded(); });
    const std::vector<Shared<SystemActivity>> fresh(1);
    model->setRecordingMode(RecordingMode::recording);
    state().setSystemActivity(fresh);
    test::until([&] { return starting.isReady(); });
    EXPECT_EQ(state().systemActivity().size(), 1U);
    finish();
}

TEST_F(AppModelTest, ConvertsTheRecordingModesOfEarlierReleases) {
    preferences.set("privateUntil", std::int64_t{1});
    const std::pair<const char*, RecordingMode> cases[] = {
        {"privateMode", RecordingMode::paused},
        {"paused", RecordingMode::paused},
        {"recording", RecordingMode::recording},
        {"unknown", RecordingMode::recording},
    };
    for (const auto& [text, mode] : cases) {
        preferences.set("recordingMode", std::string(text));
        restart();
        EXPECT_EQ(*state().recordingMode, mode) << text;
        EXPECT_EQ(preferences.text("recordingMode"), rawValue(mode));
        EXPECT_EQ(preferences.integer("privateUntil"), std::nullopt);
    }
}

TEST_F(AppModelTest, AStartWhilePausedShowsStoredActivityAndRecordsNothing) {
    preferences.set("recordingMode", std::string("paused"));
    std::vector<SystemActivity> records(1);
    records[0].kind = SystemActivity::Kind::woke;
    for (const auto& text : {json::encoded(records), std::string("[{")}) {
        folder.write("Tidemark/system-activity.json", text);
        restart();
        EXPECT_EQ(model->recordingStatus(), "Paused");
        EXPECT_EQ(model->menuSymbol(), "pause.circle");
        EXPECT_EQ(state().systemActivity().size(), text.size() > 2 ? 1U : 0U);
        EXPECT_EQ(test::contents(data / "system-activity.json"), text);
    }
    EXPECT_EQ(observations, 0);
    EXPECT_EQ(live.log, "load load ");
}
