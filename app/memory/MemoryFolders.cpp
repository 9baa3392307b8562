#include "app/memory/MemoryFolders.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Error.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

namespace {

using Bookmarks = std::map<std::string, Data>;

Bookmarks bookmarksIn(const Preferences& preferences) {
    return preferences.dataTable(preferenceKeys::memoryFolderBookmarks.name).value_or(Bookmarks{});
}

bool store(Preferences& preferences, std::vector<std::string> paths, Bookmarks bookmarks) {
    return preferences.set(preferenceKeys::memoryFolderBookmarks.name, std::move(bookmarks))
           && preferences.set(preferenceKeys::memoryFolders.name, std::move(paths));
}

} // namespace

MemoryFolders::MemoryFolders(const Preferences& preferences, BookmarkOperations operations)
    : paths(read(preferences, preferenceKeys::memoryFolders)), bookmarks(bookmarksIn(preferences)),
      operations(std::move(operations)) {}

std::filesystem::path MemoryFolders::find(const std::string& path) const {
    const auto bookmark = bookmarks.find(path);
    if (bookmark == bookmarks.end())
        return path;
    const auto resolved = operations.resolve(bookmark->second);
    if (resolved.failure)
        throw Error(*resolved.failure);
    return resolved.url;
}

std::vector<std::filesystem::path> MemoryFolders::open() const {
    std::vector<std::filesystem::path> folders;
    for (const auto& path : paths) {
        try {
            const auto folder = find(path);
            if (folder.is_absolute() && operations.start(folder))
                folders.push_back(folder);
        } catch (const Error&) {
            // The others are opened nevertheless.
        }
    }
    return folders;
}

bool MemoryFolders::include(Preferences& preferences, const std::filesystem::path& folder,
                            Data bookmark) {
    auto paths = read(preferences, preferenceKeys::memoryFolders);
    auto bookmarks = bookmarksIn(preferences);
    const std::string path = textFromBytes(folder.native());
    if (std::ranges::find(paths, path) == paths.end())
        paths.push_back(path);
    bookmarks[path] = std::move(bookmark);
    return store(preferences, std::move(paths), std::move(bookmarks));
}

bool MemoryFolders::remove(Preferences& preferences, const std::filesystem::path& folder) {
    auto paths = read(preferences, preferenceKeys::memoryFolders);
    auto bookmarks = bookmarksIn(preferences);
    const std::string path = textFromBytes(folder.native());
    std::erase(paths, path);
    bookmarks.erase(path);
    return store(preferences, std::move(paths), std::move(bookmarks));
}

} // namespace tidemark
