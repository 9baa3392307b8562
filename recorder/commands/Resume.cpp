#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/RecordingChange.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

QCoro::Task<std::string> resume(CommandContext& context, const NoOptions&) {
    co_return changeRecording(context, RecordingMode::recording);
}

} // namespace

Command commands::resume() {
    return makeCommand<NoOptions, &tidemark::resume>(
        {
            .name = "resume",
            .group = CommandGroup::recording,
            .summary = "Resume recording with a new starting point",
        },
        {.changesSettings = true});
}

} // namespace tidemark
