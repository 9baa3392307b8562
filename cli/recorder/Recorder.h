#pragma once

#include "app/base/NotificationCenter.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "cli/recorder/RecordedHistory.h"
#include "core/base/Error.h"
#include "core/base/FolderLock.h"

#include <filesystem>
#include <memory>

namespace tidemark {

/// Where the program keeps its things for this user.
struct RecorderPlaces {
    DataFiles files;
    std::filesystem::path settings;
    std::filesystem::path socket;

    /// By the environment of the process.
    static RecorderPlaces current();
};

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
    MemoryHistoryService memory;
    LiveWiring live;
    AppModel appModel;
    TaskScope scope;
};

} // namespace tidemark
