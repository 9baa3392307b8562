#pragma once

#include <QGuiApplication>
#include <QLabel>

/// How a label with a text of any length is laid out.
namespace tidemark::wrappingPolicy {

/// The edge of the window at which lines begin. Qt alone takes the direction of the text.
inline Qt::Alignment leadingEdge() {
    return Qt::AlignAbsolute | (QGuiApplication::isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
}

/// Wraps, and never makes its window wider: a path has no blanks to wrap at.
inline void apply(QLabel& label) {
    label.setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // Without that, the label is as high as at the width that it would like best.
    policy.setHeightForWidth(true);
    label.setSizePolicy(policy);
}

} // namespace tidemark::wrappingPolicy
