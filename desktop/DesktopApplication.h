#pragma once

#include "app/settings/ViewSettings.h"
#include "core/base/FreeDescriptors.h"
#include "recorder/Interruption.h"
#include "recorder/RunningRecorder.h"
#include "views/workspace/WorkspaceWindow.h"

#include <memory>

namespace tidemark {

/// The recorder with windows, from its start to its end. Needs the application object of Qt. Main
/// thread only.
class DesktopApplication {
public:
    /// Takes the data folder and listens for commands. Throws `FolderTaken` when another process
    /// has the folder, and `Error` when the socket can't be made.
    explicit DesktopApplication(RecorderPlaces where);

    /// Shows the window and records until the user or `interruption` ends the program. Returns the
    /// exit status.
    int run(const Interruption& interruption);

private:
    static QCoro::Task<void> start(Recorder& recorder);

    Recorder recorder;
    const SettingSources sources = Recorder::sources();
    ViewSettings viewSettings;
    /// After the recorder that it listens for, and before it is gone.
    RunningRecorder running;
};

} // namespace tidemark
