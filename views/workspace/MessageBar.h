#pragma once

#include "core/presentation/WorkspaceMessage.h"

#include <QFrame>

class QVBoxLayout;

namespace tidemark {

/// The messages above the list, each with its button; hidden while there are none.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    explicit MessageBar(QWidget* parent = nullptr);

    void present(const std::vector<WorkspaceMessage>& messages);

Q_SIGNALS:
    void retryTriggered(tidemark::WorkspaceMessage::Retry retry);
    /// The user closed a message that is not about a failure.
    void noticeClosed();

private:
    QWidget* barOf(const WorkspaceMessage& message);

    std::vector<WorkspaceMessage> shown;
    QVBoxLayout* column;
};

} // namespace tidemark
