#pragma once

#include "core/presentation/EmptyState.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace tidemark {

class DimLabel;

/// What stands in place of an empty list: a large symbol, a title, a sentence, at most one button.
class EmptyStateView : public QWidget {
    Q_OBJECT

public:
    explicit EmptyStateView(QWidget* parent = nullptr);

    void present(const EmptyState& state);

Q_SIGNALS:
    void actionTriggered(tidemark::EmptyState::Action action);

protected:
    void changeEvent(QEvent* event) override;

private:
    void drawSymbol();
    void fitHeights();

    EmptyState shown;
    QLabel* symbol;
    QLabel* title;
    DimLabel* explanation;
    QPushButton* button;
};

} // namespace tidemark
