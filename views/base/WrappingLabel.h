#pragma once

#include <QLabel>

namespace tidemark {

/// A text of any length and content, such as why something failed: it wraps also within a path,
/// never makes its window wider, and can be selected. What is very long is cut; the tool tip has
/// more of it.
class WrappingLabel : public QLabel {
    Q_OBJECT

public:
    explicit WrappingLabel(const QString& text = {}, QWidget* parent = nullptr);

    void setWhole(const QString& text);
};

} // namespace tidemark
