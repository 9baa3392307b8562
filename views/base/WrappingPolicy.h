#pragma once

#include <QGuiApplication>
#include <QLabel>

/// How a label with a text of any length is laid out.
namespace tidemark::wrappingPolicy {

/// The edge of the window at which lines begin. By default Qt aligns a text by its own direction
/// instead.
inline Qt::Alignment leadingEdge() {
    return Qt::AlignAbsolute | (QGuiApplication::isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
}

/// Makes a label wrap its text and never widen its window, even for a path, which has no blanks to
/// wrap at.
inline void apply(QLabel& label) {
    label.setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // Otherwise the label would be as high as it needs to be at its preferred width.
    policy.setHeightForWidth(true);
    label.setSizePolicy(policy);
}

} // namespace tidemark::wrappingPolicy
