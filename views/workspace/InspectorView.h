#pragma once

#include "core/presentation/EventInspection.h"

#include <QScrollArea>
#include <optional>

class QVBoxLayout;

namespace tidemark {

/// Lays out what is known of one event, or the placeholder while none is selected.
class InspectorView : public QScrollArea {
    Q_OBJECT

public:
    explicit InspectorView(QWidget* parent = nullptr);

    /// The caller has translated the title and the subtitle; all other texts are translated here.
    void present(const std::optional<EventInspection>& inspection);

Q_SIGNALS:
    void actionTriggered(tidemark::InspectionCommand command);
    void closed();

private:
    void addPlaceholder(QVBoxLayout& column);
    void addHead(QVBoxLayout& column, const EventInspection& inspection);
    void addActions(QVBoxLayout& column, const EventInspection& inspection);
};

} // namespace tidemark
