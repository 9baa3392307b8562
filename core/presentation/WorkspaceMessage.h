#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// A bar above the list.
struct WorkspaceMessage {
    /// The action of the button.
    enum class Retry { none, readHistory, check };

    /// Empty when the message is not about a failure.
    std::string title;
    std::string text;
    Retry retry = Retry::none;
    /// The label of the button; empty without a button.
    std::string retryLabel{};

    bool isFailure() const { return !title.empty(); }
    bool operator==(const WorkspaceMessage&) const = default;
};

/// The state from which the messages are made. A text is absent when there is no message of its
/// kind.
struct WorkspaceProblems {
    /// The error of the last load, capture or save.
    std::optional<std::string> error{};
    /// True when the history has been read.
    bool isLoaded = true;
    bool canCheck = true;
    std::optional<std::string> activity{};
    std::optional<std::string> memory{};
    std::optional<std::string> settings{};
    std::optional<std::string> folders{};
    /// The result of the import at the first start.
    std::optional<std::string> initialHistory{};
};

/// Failures first, the one that can be tried again at the top.
std::vector<WorkspaceMessage> workspaceMessages(const WorkspaceProblems& problems);

} // namespace tidemark
