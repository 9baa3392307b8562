#include "recorder/RunningRecorder.h"

#include "app/ports/SystemServices.h"
#include "recorder/CommandRequests.h"

namespace tidemark {

RunningRecorder::RunningRecorder(Recorder& owner)
    : recorder(owner),
      server(std::make_unique<ControlServer>([this](ControlRequest request, std::stop_token stop) {
          return commandRequests::answer(recorder, std::move(request), std::move(stop));
      })),
      sleepAndSession(systemServices::sleepAndSession(
          recorder.workspace(), [this] { return recorder.liveServices().writer(); })) {
    server->listen(recorder.places().sockets, recorder.lock());
}

RunningRecorder::~RunningRecorder() {
    recorder.model().stopAutomaticCaptures();
    // Before the wait for what still runs: no client may begin anything new.
    server.reset();
    recorder.tasks().drain();
}

} // namespace tidemark
