#pragma once

#include <QWidget>

namespace tidemark {

/// A group of controls on a panel with round corners, in the colour of the window.
class RoundedPanel : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tidemark
