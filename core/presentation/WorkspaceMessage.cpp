#include "core/presentation/WorkspaceMessage.h"

#include "core/presentation/SystemWords.h"

namespace tidemark {

namespace {

using systemWords::shown;
using Retry = WorkspaceMessage::Retry;

constexpr const char* failureTitle = "Tidemark needs your attention";

WorkspaceMessage failure(const std::string& text) {
    return {failureTitle, shown(text)};
}

WorkspaceMessage errorMessage(const std::string& text, const WorkspaceProblems& problems) {
    WorkspaceMessage message = failure(text);
    if (!problems.isLoaded) {
        message.retry = Retry::readHistory;
        message.retryLabel = "Try Again";
    } else if (problems.canCheck) {
        message.retry = Retry::check;
        message.retryLabel = "Check Now";
    }
    return message;
}

} // namespace

std::vector<WorkspaceMessage> workspaceMessages(const WorkspaceProblems& problems) {
    std::vector<WorkspaceMessage> messages;
    if (problems.error)
        messages.push_back(errorMessage(*problems.error, problems));
    for (const auto* text :
         {&problems.activity, &problems.memory, &problems.settings, &problems.folders})
        if (*text)
            messages.push_back(failure(**text));
    if (problems.initialHistory)
        messages.push_back({"", shown(*problems.initialHistory)});
    return messages;
}

} // namespace tidemark
