#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// A bar above the list.
struct WorkspaceMessage {
    /// What the button of the bar does.
    enum class Retry { none, readHistory, check };

    /// Empty for what is no failure.
    std::string title;
    std::string text;
    Retry retry = Retry::none;
    /// Of the button; empty without one.
    std::string retryLabel{};

    bool isFailure() const { return !title.empty(); }
    bool operator==(const WorkspaceMessage&) const = default;
};

/// What messages are made of: each text absent where there is nothing to say.
struct WorkspaceProblems {
    /// Of the last load, capture or save.
    std::optional<std::string> error{};
    /// The history has been read.
    bool isLoaded = true;
    bool canCheck = true;
    std::optional<std::string> activity{};
    std::optional<std::string> memory{};
    std::optional<std::string> settings{};
    std::optional<std::string> folders{};
    /// What became of the import at the first start.
    std::optional<std::string> initialHistory{};
};

/// Failures first, the one that can be tried again at the top.
std::vector<WorkspaceMessage> workspaceMessages(const WorkspaceProblems& problems);

} // namespace tidemark
