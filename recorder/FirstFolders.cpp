#include "recorder/FirstFolders.h"

#include "recorder/CommandContext.h"
#include "recorder/Recorder.h"

#include <QScopeGuard>

namespace tidemark::firstFolders {

std::vector<RecommendedFolder> readable(std::vector<RecommendedFolder> folders) {
    std::erase_if(
        folders, [](const auto& folder) { return directoryAccessFailure(folder.url).has_value(); });
    return folders;
}

QCoro::Task<void> choose(Recorder& recorder, std::vector<RecommendedFolder> chosen) {
    const auto hold = recorder.tasks().hold();
    auto& model = recorder.model();
    if (model.state().isAnyRunning(exclusions::checks.with(Operation::managingFolders)))
        throw Error(anotherOperation);
    model.beginFolderManagement();
    auto cancel = qScopeGuard([&model] { model.cancelFolderManagement(); });
    if (!chosen.empty())
        co_await model.folderAccess().enableReadableRecommended(std::move(chosen));
    // The program is ending, perhaps before all folders were checked: the choice is not recorded,
    // so the next start makes it again.
    if (model.state().isEnding)
        co_return;
    cancel.dismiss();
    if (model.state().loaded())
        co_await model.finishFolderManagement();
    else
        model.completeFolderManagement();
}

} // namespace tidemark::firstFolders
