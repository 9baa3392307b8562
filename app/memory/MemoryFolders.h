#pragma once

#include "app/capture/BookmarkOperations.h"
#include "app/preferences/Preferences.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tidemark {

/// The folders that the user has chosen for the file history, by their paths and bookmarks in the
/// settings. The object has a copy of these settings, so any thread may call `open`; the other
/// functions are for the main thread.
class MemoryFolders {
public:
    /// For the panel in which the user chooses a folder.
    static constexpr std::string_view prompt = "Include Folder";
    static constexpr std::string_view message =
        "Record indexed file metadata from this folder. File contents are not read.";
    /// The status when `include` fails.
    static constexpr std::string_view notIncluded = "Folder access could not be saved.";

    MemoryFolders(const Preferences& preferences, BookmarkOperations operations);

    /// The folders that can be read now. `BookmarkOperations::start` has been called for each, and
    /// the caller has to call `stop`. A folder without a bookmark is opened by its path, as on
    /// systems where a process needs no bookmark. Blocks.
    std::vector<std::filesystem::path> open() const;

    /// Adds a folder with the bookmark that `BookmarkOperations::create` made of it. `include`
    /// and `remove` return false when the settings can't be stored.
    static bool include(Preferences& preferences, const std::filesystem::path& folder,
                        Data bookmark);
    static bool remove(Preferences& preferences, const std::filesystem::path& folder);

private:
    std::filesystem::path find(const std::string& path) const;

    std::vector<std::string> paths;
    std::map<std::string, Data> bookmarks;
    BookmarkOperations operations;
};

} // namespace tidemark
