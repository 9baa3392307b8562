#include "recorder/FolderChange.h"

#include "app/base/Background.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Text.h"
#include "recorder/Recorder.h"

#include <algorithm>

namespace tidemark {

FolderChange::FolderChange(const CommandContext& where) : context(where) {
    if (context.state().isAnyRunning(exclusions::checks.with(Operation::managingFolders)))
        throw Error(anotherOperation);
    context.model().beginFolderManagement();
}

FolderChange::~FolderChange() {
    context.model().cancelFolderManagement();
}

void FolderChange::finish() {
    if (context.isRunning && context.state().loaded())
        context.recorder.tasks().start(context.model().finishFolderManagement());
    else
        context.model().completeFolderManagement();
}

QCoro::Task<GivenFolder> GivenFolder::of(FilePath path) {
    const auto resolve = [whole = path.path()](const std::stop_token&) {
        return textFromBytes(canonicalPath(whole).native());
    };
    std::string canonical = co_await runInBackground(resolve);
    co_return GivenFolder{textFromBytes(standardizedPath(path.path()).native()),
                          std::move(canonical)};
}

FolderGrant GivenFolder::granted(const FolderAccess& folders) const {
    // A folder that has become a link is known by where it was.
    for (const auto& candidate : {text, canonical})
        if (const auto grant = std::ranges::find(folders.grants(), candidate, &FolderGrant::path);
            grant != folders.grants().end())
            return *grant;
    throw Error(oneLine(text) + " is not monitored.");
}

} // namespace tidemark
