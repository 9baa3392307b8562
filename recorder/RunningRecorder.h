#pragma once

#include "app/control/ControlServer.h"
#include "app/ports/SleepAndSessionSource.h"
#include "recorder/Recorder.h"

#include <memory>

namespace tidemark {

/// What a recorder has besides in a program that stays: it follows the sleep of the machine and the
/// user's session, and carries out the commands of other processes. Main thread only.
class RunningRecorder {
public:
    /// Listens for commands from now on. Throws `Error` when the socket can't be made.
    explicit RunningRecorder(Recorder& owner);
    /// Ends all recording, and waits for what is being saved.
    ~RunningRecorder();
    RunningRecorder(const RunningRecorder&) = delete;
    RunningRecorder& operator=(const RunningRecorder&) = delete;

private:
    Recorder& recorder;
    std::unique_ptr<ControlServer> server;
    const std::unique_ptr<SleepAndSessionSource> sleepAndSession;
};

} // namespace tidemark
