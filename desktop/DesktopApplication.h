#pragma once

#include "desktop/DesktopWindows.h"
#include "recorder/Interruption.h"
#include "recorder/RunningRecorder.h"

namespace tidemark {

/// The recorder with windows, from its start to its end. Needs the application object of Qt. Main
/// thread only.
class DesktopApplication {
public:
    /// Takes the data folder and listens for commands. Throws `FolderTaken` when another process
    /// has the folder, and `Error` when the socket can't be made.
    explicit DesktopApplication(const RecorderPlaces& where);
    ~DesktopApplication();

    /// Shows the window at once or, if `inBackground`, only when it is asked for. Records until the
    /// user or `interruption` ends the program. Returns the exit status.
    int run(const Interruption& interruption, bool inBackground);

private:
    static QCoro::Task<void> start(Recorder& recorder);

    Recorder recorder;
    /// Declared after the recorder that it uses, so that it is destroyed first.
    RunningRecorder running;
};

} // namespace tidemark
