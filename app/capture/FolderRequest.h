#pragma once

#include <QCoroTask>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// What a panel for choosing folders shows, and which folders it may return. A panel offers only
/// existing folders.
struct FolderRequest {
    std::string title;
    std::string prompt;
    std::string message;
    /// The only folder that may be picked; absent when any may be.
    std::optional<std::filesystem::path> suggested;
    bool allowsSeveral = false;
    bool showsHiddenFiles = false;
    /// Whether the panel may come back after a restart.
    bool isRestorable = true;
    /// The folder that the panel shows first; when absent, the panel decides.
    std::optional<std::filesystem::path> opensAt;
    std::optional<std::string> accessoryText;

    static FolderRequest of(const std::optional<std::filesystem::path>& suggested);

    /// True if the user may pick this folder. Compares paths as text, without reading the disk.
    bool allows(const std::filesystem::path& url) const;
    /// Why the panel must not return this folder; absent when it may.
    std::optional<std::string> refusal(const std::filesystem::path& url) const;
};

/// Shows a panel and returns the folders that the user picked, if any.
using FolderPicker = std::function<QCoro::Task<std::vector<std::filesystem::path>>(FolderRequest)>;

} // namespace tidemark
