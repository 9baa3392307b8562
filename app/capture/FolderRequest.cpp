#include "app/capture/FolderRequest.h"

#include "app/capture/FolderGrant.h"
#include "core/base/Text.h"

namespace tidemark {

namespace {

namespace fs = std::filesystem;

bool isHiddenTrash(const fs::path& folder) {
    return lastPathComponent(folder.native()) == ".Trash";
}

} // namespace

FolderRequest FolderRequest::of(const std::optional<fs::path>& suggested) {
    FolderRequest request;
    request.suggested = suggested;
    if (!suggested) {
        request.title = "Choose Folders to Monitor";
        request.prompt = "Allow Selected Folders";
        request.message = "Command-click to select multiple folders.";
        request.allowsSeveral = true;
    } else if (isHiddenTrash(*suggested)) {
        request.title = "Allow Trash Access";
        request.prompt = "Allow Trash";
        request.message = "Select .Trash. Hidden folders are shown.";
        request.showsHiddenFiles = true;
        request.isRestorable = false;
        request.opensAt = standardizedPath(*suggested).parent_path();
        request.accessoryText = "If macOS opens your home folder, select .Trash in the list.\n"
                                "Or press Shift–Command–G and enter ~/.Trash.";
    } else {
        request.title = "Allow Folder Access";
        request.prompt = "Allow Access";
        request.message = "Tidemark will read this folder to observe changes.";
        request.opensAt = suggested;
    }
    return request;
}

bool FolderRequest::allows(const fs::path& url) const {
    return !suggested || standardizedPath(url) == standardizedPath(*suggested);
}

std::optional<std::string> FolderRequest::refusal(const fs::path& url) const {
    if (allows(url))
        return std::nullopt;
    if (isHiddenTrash(*suggested))
        return "Select the .Trash folder, not your home folder. Hidden folders are visible. You "
               "can also press Shift–Command–G and enter "
               + textFromBytes(suggested->native());
    return "Select " + textFromBytes(lastPathComponent(suggested->native()))
           + " to approve this recommended folder.";
}

} // namespace tidemark
