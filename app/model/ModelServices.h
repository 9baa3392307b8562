#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "app/capture/FolderAccess.h"
#include "app/model/LiveServices.h"
#include "app/preferences/Preferences.h"
#include "core/capture/ObservationOptions.h"
#include "core/journal/JournalStore.h"
#include "core/records/Snapshot.h"

#include <functional>
#include <memory>

namespace tidemark {

/// Takes one observation of the machine; throws when it can't. One that is stopped may give an
/// incomplete snapshot, which is not kept.
using Observe = std::function<QCoro::Task<Snapshot>(ObservationOptions, std::stop_token)>;

/// Asks the system not to hold this process back, for as long as the result lives.
using BeginActivity = std::function<std::shared_ptr<void>(const std::string& reason)>;

/// What the parts of the controller work with. All of it outlives them.
struct ModelServices {
    Preferences& preferences;
    AppClock& clock;
    FolderAccess& folderAccess;
    JournalStore& store;
    /// A single thread for the store, so that saves reach it in the order in which they were asked
    /// for, and checks of folders that hang can't hold them up.
    WorkerPool& journalThread;
    /// Holds the coroutines of all parts.
    TaskScope& tasks;
    std::filesystem::path home;
    Observe observe;
    BeginActivity beginActivity;
    /// Null in a program that has none.
    LiveServices* live = nullptr;
    /// Fills an empty journal from what the system remembers; absent in a program that can't.
    std::function<QCoro::Task<void>()> importInitialHistory;
};

} // namespace tidemark
