#pragma once

#include "app/base/NotificationCenter.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "app/preferences/SettingSource.h"
#include "core/base/Error.h"
#include "core/base/FolderLock.h"
#include "recorder/RecordedHistory.h"
#include "recorder/RecorderPlaces.h"

#include <filesystem>

namespace tidemark {

/// Another process has the data folder.
class FolderTaken : public Error {
public:
    using Error::Error;
};

/// Everything that records, put together: the one place that knows each class. Needs the
/// application object of Qt. Main thread only.
class Recorder {
public:
    /// Takes the data folder. Throws `FolderTaken` when another process has it.
    explicit Recorder(RecorderPlaces where);

    /// What is connected here, for the settings to tell.
    static SettingSources sources();

    const RecorderPlaces& places() const { return where; }
    const FolderLock& lock() const { return held; }
    AppModel& model() { return appModel; }
    JsonPreferences& preferences() { return stored; }
    LiveWiring& liveServices() { return live; }
    NotificationCenter& workspace() { return workspaceCenter; }
    TaskScope& tasks() { return scope; }
    MemoryHistoryService& memoryHistory() { return memory; }
    /// What has been recorded so far.
    RecordedHistory recorded() const;

private:
    static FolderLock taken(const std::filesystem::path& folder);

    RecorderPlaces where;
    FolderLock held;
    JsonPreferences stored;
    NotificationCenter applicationCenter;
    NotificationCenter workspaceCenter;
    ModelState state;
    MemoryHistoryService memory;
    LiveWiring live;
    AppModel appModel;
    TaskScope scope;
};

} // namespace tidemark
