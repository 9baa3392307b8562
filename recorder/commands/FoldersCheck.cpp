#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Commands.h"
#include "recorder/FolderChange.h"
#include "recorder/NoOptions.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

QCoro::Task<std::string> foldersCheck(CommandContext& context, const NoOptions&) {
    FolderChange change(context);
    if (!context.state().mayBegin(Operation::checkingFolders))
        throw Error(anotherOperation);
    co_await context.model().checkRecommendedAccess();
    change.finish();
    const auto& message = context.folders().message();
    co_return message ? oneLine(systemWords::shown(*message)) + "\n" : "";
}

} // namespace

Command commands::foldersCheck() {
    return makeCommand<NoOptions, &tidemark::foldersCheck>(
        {
            .name = "folders check",
            .group = CommandGroup::choices,
            .summary = "Monitor all recommended folders that can be read",
        },
        {.changesSettings = true});
}

} // namespace tidemark
