#pragma once

#include "app/control/ControlServer.h"
#include "app/ports/ScreenSleepSource.h"
#include "app/ports/SleepAndSessionSource.h"
#include "recorder/Recorder.h"

#include <memory>

namespace tidemark {

/// The additional parts of a recorder that keeps running: it follows the sleep of the machine and
/// the user's session, and carries out commands of other processes. Main thread only.
class RunningRecorder {
public:
    /// Starts to listen for commands. Throws `Error` when the socket can't be created.
    explicit RunningRecorder(Recorder& recorder);
    /// Ends all recording and waits for running saves.
    ~RunningRecorder();
    RunningRecorder(const RunningRecorder&) = delete;
    RunningRecorder& operator=(const RunningRecorder&) = delete;

private:
    Recorder& recorder;
    std::unique_ptr<ControlServer> server;
    const std::unique_ptr<SleepAndSessionSource> sleepAndSession;
    const std::unique_ptr<ScreenSleepSource> screenSleep;
};

} // namespace tidemark
