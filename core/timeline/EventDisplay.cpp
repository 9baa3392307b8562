#include "core/timeline/EventDisplay.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/system/TrashFolder.h"
#include "core/timeline/DiffEngine.h"

namespace tidemark {

namespace {

constexpr const char* newItem = "New Background Item";
constexpr const char* emptyTrash = "Trash Is Now Empty";

std::string sizeTitle(const FolderSize& before, const FolderSize& after) {
    if (DiffEngine::isContentsChange(before, after))
        return after.name + " Contents Changed";
    // Equal sizes count as shrunk; they only get here when the contents changed.
    const char* direction = before.bytes < after.bytes ? " Grew in Size" : " Shrank in Size";
    if (!TrashFolder::is(after.path))
        return after.name + direction;
    if (after.itemCount == 0 && before.itemCount.value_or(0) >= 1)
        return emptyTrash;
    return std::string("Trash") + direction;
}

/// The headline for the first change of an event; `stored` is the title in the document.
struct TitleOfChange {
    const std::string& stored;

    std::string operator()(const change::MetadataChanged&) const { return stored; }
    std::string operator()(const change::OperatingSystemChanged&) const { return "macOS Changed"; }
    std::string operator()(const change::ApplicationInstalled& installed) const {
        return installed.value->name + " Installed";
    }
    std::string operator()(const change::ApplicationRemoved& removed) const {
        return removed.value->name + " Removed";
    }
    std::string operator()(const change::ApplicationUpdated& updated) const {
        return updated.after->name + " Updated";
    }
    std::string operator()(const change::BackgroundAdded&) const {
        const std::string ending = newBackgroundItemTitle("");
        if (!asciiLowercased(stored).ends_with(asciiLowercased(ending)))
            return newItem;
        return stored.substr(0, stored.size() - ending.size()) + ending;
    }
    std::string operator()(const change::BackgroundRemoved&) const {
        return "Background Item Removed";
    }
    std::string operator()(const change::BackgroundChanged&) const {
        return "Background Item Changed";
    }
    std::string operator()(const change::FolderSizeChanged& changed) const {
        return sizeTitle(*changed.before, *changed.after);
    }
    std::string operator()(const change::FreeDiskSpaceChanged& space) const {
        return space.after < space.before ? "Less Space Available" : "Space Freed Up";
    }
    std::string operator()(const change::TrashBecameEmpty&) const { return emptyTrash; }
};

} // namespace

std::string displayTitle(const Event& event) {
    if (event.systemActivity)
        return event.systemActivity->title();
    if (event.installationRecord)
        return event.installationRecord->title();
    if (event.changes.empty())
        return event.title;
    return std::visit(TitleOfChange{event.title}, event.changes.front());
}

std::string newBackgroundItemTitle(std::string_view application) {
    return std::string(application) + ": " + newItem;
}

std::string displaySubtitle(const Event& event) {
    const auto* space = event.changes.empty()
                            ? nullptr
                            : std::get_if<change::FreeDiskSpaceChanged>(&event.changes.front());
    if (!space)
        return event.subtitle;
    return (event.volumeContext ? event.volumeContext->name + " · " : "")
           + byteString(distanceBetween(space->after, space->before))
           + (space->after < space->before ? " decrease" : " increase") + " in free space · "
           + byteString(space->after) + " remaining";
}

} // namespace tidemark
