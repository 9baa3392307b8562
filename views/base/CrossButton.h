#pragma once

#include <QToolButton>

namespace tidemark {

/// A small button with a cross, in the colour of second lines: icon themes draw it red, as if
/// something were wrong.
class CrossButton : public QToolButton {
    Q_OBJECT

public:
    /// `purpose` is the tool tip, and what a screen reader says.
    explicit CrossButton(const QString& purpose, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void drawCross();
};

} // namespace tidemark
