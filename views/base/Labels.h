#pragma once

#include <QLabel>

namespace tidemark {

/// A label in the dimmed colour of less important texts, which follows changes of the palette.
class DimLabel : public QLabel {
    Q_OBJECT

public:
    explicit DimLabel(const QString& text = {}, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void adaptColor();
};

/// Functions that make labels and what goes with them. Texts are shown as plain text, whatever they
/// contain.
namespace labels {

/// A bold text, `factor` times as large as other texts.
QLabel* title(const QString& text, double factor);
/// The heading of a section: bold.
QLabel* heading(const QString& text);
/// A dim, wrapping text.
DimLabel* note(const QString& text);
/// A horizontal line between two parts, in the colour that separates panes.
QFrame* separator();
/// Sets the font of a widget to `factor` times the size of other texts.
void scale(QWidget& widget, double factor);

} // namespace labels

} // namespace tidemark
