#pragma once

#include "platform/linux/FileStatus.h"

#include <filesystem>
#include <functional>
#include <stop_token>
#include <string_view>
#include <vector>

/// Walks through folders level by level, beginning with the start folders. Left out are hidden
/// files and folders, "node_modules", links, mounted volumes, unfinished downloads and the
/// temporary files of editors.
namespace tidemark::folderWalk {

/// Folders that lie deeper are not entered.
inline constexpr int mostDepth = 12;

struct Start {
    std::filesystem::path folder;
    int depth = 0;
};

struct Visitor {
    /// Called before the entries of a folder are read.
    std::function<void(const std::filesystem::path& folder)> enter;
    std::function<void(const std::filesystem::path& file, const FileStatus& status)> file;
};

/// Whether a file or folder of this name is visited.
bool isVisited(std::string_view name);

/// Visits the folders and everything below. What can't be read is left out. False when it was
/// stopped.
bool visit(const std::vector<Start>& starts, const Visitor& visitor, const std::stop_token& stop);

} // namespace tidemark::folderWalk
