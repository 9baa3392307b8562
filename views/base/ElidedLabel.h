#pragma once

#include <QLabel>

namespace tidemark {

/// One line that is elided where it does not fit, with all of it in the tool tip then.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode elided = Qt::ElideRight, QWidget* parent = nullptr);

    /// Draws the text in the dimmed colour of second lines.
    void setDim();
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Qt::TextElideMode elision;
    bool isDim = false;
};

} // namespace tidemark
