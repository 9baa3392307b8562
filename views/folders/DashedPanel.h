#pragma once

#include <QWidget>

namespace tidemark {

/// A panel with a dashed frame, for what is known in part only.
class DashedPanel : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tidemark
