#pragma once

#include "app/base/NotificationCenter.h"
#include "app/memory/ApplicationCollector.h"
#include "app/memory/ClipboardHistory.h"
#include "app/memory/FileCollector.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/model/BackgroundItemNotices.h"
#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "app/preferences/SettingSource.h"
#include "core/base/Error.h"
#include "core/base/FolderLock.h"
#include "recorder/LiveMonitors.h"
#include "recorder/ProgramRequests.h"
#include "recorder/RecordedHistory.h"
#include "recorder/RecorderPlaces.h"

#include <filesystem>

namespace tidemark {

/// Another process has locked the data folder.
class FolderTaken : public Error {
public:
    using Error::Error;
};

/// Creates and connects everything that records; the only class that depends on all of it. Needs
/// the application object of Qt. Main thread only.
class Recorder {
public:
    /// Whether the program shows the history in windows. If not, its model has no merged history.
    enum class Windows { none, some };

    /// Locks the data folder. Throws `FolderTaken` when another process has locked it.
    explicit Recorder(const RecorderPlaces& where, Windows windows = Windows::none);

    /// The sources that are connected on this system; settings of others are marked as not
    /// available.
    static SettingSources sources(const Preferences& preferences);
    /// The connected sources except those that the running monitors found missing on this machine.
    SettingSources presentSources() const;
    /// What the running monitors observe.
    std::vector<MonitorStatus> monitorStatuses() const;

    const RecorderPlaces& places() const { return where; }
    const FolderLock& lock() const { return held; }
    AppModel& model() { return appModel; }
    JsonPreferences& preferences() { return stored; }
    LiveWiring& liveServices() { return live; }
    /// Posts what happens to the windows of the program.
    NotificationCenter& application() { return applicationCenter; }
    NotificationCenter& workspace() { return workspaceCenter; }
    TaskScope& tasks() { return scope; }
    MemoryHistoryService& memoryHistory() { return memory; }
    ClipboardHistory& clipboardHistory() { return clipboard; }
    FileCollector& files() { return fileCollector; }
    /// Set by the program, read by commands.
    ProgramRequests& requests() { return programRequests; }
    /// Everything that has been recorded so far.
    RecordedHistory recorded() const;

private:
    static SettingSources sourcesOf(const LiveMonitors& monitors,
                                    std::map<SettingSource, std::string> absent);
    /// Opens an event of the history; empty in a program without windows.
    std::function<void()> openingOf(const std::string& eventID) const;
    static FolderLock taken(const std::filesystem::path& folder);

    RecorderPlaces where;
    ProgramRequests programRequests;
    FolderLock held;
    JsonPreferences stored;
    NotificationCenter applicationCenter;
    NotificationCenter workspaceCenter;
    ModelState state;
    ClipboardHistory clipboard;
    FileCollector fileCollector;
    ApplicationCollector applicationCollector;
    MemoryHistoryService memory;
    LiveMonitors monitors;
    LiveWiring live;
    AppModel appModel;
    BackgroundItemNotices notices;
    TaskScope scope;
};

} // namespace tidemark
