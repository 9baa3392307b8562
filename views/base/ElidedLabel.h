#pragma once

#include <QLabel>

namespace tidemark {

/// A text on one line. Where it does not fit, a part is replaced by "…", and the tool tip shows the
/// whole text, unless another tool tip was set.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode elided = Qt::ElideRight, QWidget* parent = nullptr);

    /// Draws the text in the dimmed colour that the second line of a list row has.
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
