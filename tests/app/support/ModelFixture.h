#pragma once

#include "app/model/AppModel.h"
#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/Observations.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tidemark::test {

/// Live services that log their calls.
class LoggedServices final : public LiveServices {
public:
    QCoro::Task<void> loadMemory() override {
        log += "load ";
        if (fails)
            throw Error("The memory can't be read.");
        co_return;
    }
    void startActivityMonitors() override { log += "activity "; }
    void startMemory() override { log += "memory "; }
    void stop() override { log += "stop "; }
    std::optional<std::string> memoryFailure() const override { return failure; }

    std::string log;
    bool fails = false;
    std::optional<std::string> failure;
};

/// A controller with a real journal in a real folder and a manual clock. An observation takes
/// `captureDuration` seconds of that clock and finds `applications`.
struct ModelFixture : testing::Test {
    ModelFixture() {
        preferences.set("folderSetupCompleted", true);
        create();
    }

    /// Creates the controller without starting it.
    void create() {
        model.reset();
        modelState.emplace(preferences, clock.now());
        model.emplace(AppModel::Setup{.state = *modelState,
                                      .live = live,
                                      .preferences = preferences,
                                      .files = {data, {}},
                                      .applicationCenter = application,
                                      .workspaceCenter = workspace,
                                      .clock = clock,
                                      .bookmarks = bookmarks,
                                      .home = folder.path(),
                                      .recommended = RecommendedFolder::ofMac(folder.path()),
                                      .observe =
                                          [this](ObservationOptions options, std::stop_token stop) {
                                              return observe(std::move(options), std::move(stop));
                                          },
                                      .guard = FolderGuard([this] { return ownsFolder(); }),
                                      .collectInstallations = installations,
                                      .showsHistory = showsHistory});
    }
    void start() { await(model->start()); }
    void restart() {
        create();
        start();
    }

    QCoro::Task<Snapshot> observe(ObservationOptions options, std::stop_token stop) {
        ++observations;
        lastOptions = std::move(options);
        model->scanProgress().stage = "Observing";
        co_await clock.sleep(captureDuration, stop, AppClock::Slack::none);
        if (fails)
            throw Error("The disk is gone.");
        Snapshot snapshot = test::snapshot(static_cast<unsigned>(observations));
        snapshot.timestamp = clock.now();
        snapshot.applications.emplace(std::vector(applications));
        co_return snapshot;
    }
    /// Begins a capture that runs until the clock is advanced by `captureDuration`.
    void holdCapture() {
        captureDuration = 10;
        holding = model->scan();
        until([&] { return clock.sleeping() > 1; });
    }
    /// Waits for the running operations and comparisons.
    void finish() {
        until([&] {
            return !model->isStarting()
                   && !state().isAnyRunning(exclusions::captures.with(exclusions::saves))
                   && !model->history().isComparing();
        });
        settle();
    }

    ModelState& state() { return *modelState; }
    std::string error() { return state().error->value_or("none"); }
    std::size_t snapshots() { return state().journal()->snapshots.size(); }
    std::size_t events() { return state().journal()->events.size(); }
    Journal stored() const { return JournalStore(data / "journal.json").load(); }

    const TemporaryFolder folder;
    const std::filesystem::path data = folder / "Tidemark";
    ManualAppClock clock;
    MemoryPreferences preferences;
    NotificationCenter application;
    NotificationCenter workspace;
    LoggedServices live;
    BookmarkOperations bookmarks = BookmarkOperations::direct();

    double captureDuration = 0;
    bool fails = false;
    std::vector<Shared<Application>> applications;
    std::function<bool()> ownsFolder = [] { return true; };
    /// Finds no installations.
    CollectInstallations installations = [](Date) { return InstallationPreview{}; };
    bool showsHistory = true;
    int observations = 0;
    ObservationOptions lastOptions;
    QCoro::Task<void> holding;

    std::optional<ModelState> modelState;
    std::optional<AppModel> model;
};

} // namespace tidemark::test
