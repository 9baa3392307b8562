#pragma once

#include "app/base/AppClock.h"
#include "app/memory/ClipboardHistory.h"
#include "app/memory/FileCollector.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/preferences/JsonPreferences.h"
#include "app/settings/ViewSettings.h"
#include "demo/history/MadeUpHistory.h"
#include "views/workspace/WorkspaceWindow.h"

#include <filesystem>

namespace tidemark::demo {

/// A clock that started at a given time when it was made.
class DemoClock final : public AppClock {
public:
    explicit DemoClock(Date start);

    Date now() override;
    double monotonicSeconds() override { return AppClock::system().monotonicSeconds(); }
    QCoro::Task<bool> sleep(double seconds, std::stop_token stop, Slack slack) override {
        return AppClock::system().sleep(seconds, std::move(stop), slack);
    }

private:
    const Date start;
    const double started;
};

/// The controller over a made-up history in a folder of its own. Nothing of this computer is
/// observed; a capture finds the made-up machine. Main thread only.
class DemoRecorder {
public:
    /// Writes the journal of `history` into `folder`, which must exist.
    DemoRecorder(const std::filesystem::path& folder, MadeUpHistory history, Date now);

    /// Shows the history, without asking for the folders first.
    QCoro::Task<void> open();
    /// Asks for the folders, as at the first start of all.
    QCoro::Task<void> setUp();

    AppModel& model() { return appModel; }
    JsonPreferences& preferences() { return stored; }
    /// What a window over this needs.
    WorkspaceWindow::Uses uses();
    FileCollector& files() { return fileCollector; }

    /// Seconds that a capture takes.
    double captureDuration = 4;
    /// Why captures fail, if they do.
    std::optional<std::string> captureFailure;

private:
    class Services;

    QCoro::Task<Snapshot> observe(std::stop_token stop);

    MadeUpHistory made;
    DemoClock clock;
    JsonPreferences stored;
    NotificationCenter applicationCenter;
    NotificationCenter workspaceCenter;
    ModelState state;
    ClipboardHistory clipboard;
    FileCollector fileCollector;
    MemoryHistoryService memory;
    std::unique_ptr<LiveServices> live;
    AppModel appModel;
    ViewSettings viewSettings;
    const SettingSources sources;
    TaskScope tasks;
};

} // namespace tidemark::demo
