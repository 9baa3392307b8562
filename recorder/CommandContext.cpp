#include "recorder/CommandContext.h"

#include "recorder/Recorder.h"

namespace tidemark {

AppModel& CommandContext::model() const {
    return recorder.model();
}

ModelState& CommandContext::state() const {
    return recorder.model().state();
}

FolderAccess& CommandContext::folders() const {
    return recorder.model().folderAccess();
}

Preferences& CommandContext::preferences() const {
    return recorder.preferences();
}

void CommandContext::requireHistory() const {
    if (!state().loaded())
        throw Error(state().error->value_or("The history has not been read yet; try again."));
}

void CommandContext::requireFree() const {
    requireHistory();
    if (!state().canRecord())
        throw Error("Recording is paused; tidemark resume takes it up again.");
    if (state().isRunning(Operation::choosingFolders))
        throw Error("The folders to monitor have not been chosen yet; tidemark folders does that.");
    if (state().busy())
        throw Error(anotherOperation);
}

void CommandContext::requireStored() const {
    if (!preferences().isStored())
        throw Error("This holds until Tidemark ends, and no longer. "
                    + preferences().problem().value_or("The settings could not be stored."));
}

} // namespace tidemark
