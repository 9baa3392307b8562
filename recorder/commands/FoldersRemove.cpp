#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/FolderChange.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct FoldersRemoveOptions {
    FilePath path;

    static constexpr auto fields() {
        return std::tuple{Option{"path",
                                 &FoldersRemoveOptions::path,
                                 "The folder",
                                 {.isPositional = true, .isRequired = true}}};
    }
};

QCoro::Task<std::string> foldersRemove(CommandContext& context,
                                       const FoldersRemoveOptions& options) {
    FolderChange change(context);
    const auto folder = co_await GivenFolder::of(options.path);
    const auto grant = folder.granted(context.folders());
    context.folders().remove(grant.id);
    if (context.folders().message())
        throw Error(*context.folders().message());
    change.finish();
    co_return oneLine(grant.path) + " is monitored no longer.\n";
}

} // namespace

Command commands::foldersRemove() {
    return makeCommand<FoldersRemoveOptions, &tidemark::foldersRemove>(
        {
            .name = "folders remove",
            .group = CommandGroup::choices,
            .summary = "Stop monitoring a folder",
        },
        {.changesSettings = true});
}

} // namespace tidemark
