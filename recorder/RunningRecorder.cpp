#include "recorder/RunningRecorder.h"

#include "app/ports/SystemServices.h"
#include "recorder/CommandRequests.h"

namespace tidemark {

RunningRecorder::RunningRecorder(Recorder& recorder)
    : recorder(recorder), server(std::make_unique<ControlServer>([&recorder](ControlRequest request,
                                                                             std::stop_token stop) {
          return commandRequests::answer(recorder, std::move(request), std::move(stop));
      })),
      sleepAndSession(systemServices::sleepAndSession(
          recorder.workspace(), [&recorder] { return recorder.liveServices().writer(); })),
      screenSleep(systemServices::screenSleep(recorder.workspace())) {
    server->listen(recorder.places().sockets, recorder.lock());
}

RunningRecorder::~RunningRecorder() {
    recorder.model().stopAutomaticCaptures();
    // Before waiting for running work, so that no client can start anything new.
    server.reset();
    recorder.tasks().drain();
}

} // namespace tidemark
