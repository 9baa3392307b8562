#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/RecordingChange.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

QCoro::Task<std::string> pause(CommandContext& context, const NoOptions&) {
    co_return changeRecording(context, RecordingMode::paused);
}

} // namespace

Command commands::pause() {
    return makeCommand<NoOptions, &tidemark::pause>(
        {
            .name = "pause",
            .group = CommandGroup::recording,
            .summary = "Pause all recording",
        },
        {.changesSettings = true});
}

} // namespace tidemark
