#pragma once

#include <QAccessible>
#include <QWidget>
#include <string>

namespace tidemark::test {

/// The classes of the visible widgets that take the keyboard and have no name for a screen reader,
/// with a space after each.
inline std::string namelessIn(const QWidget& window) {
    std::string nameless;
    for (auto* widget : window.findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible() || widget->focusProxy())
            continue;
        const auto* interface = QAccessible::queryAccessibleInterface(widget);
        if (!interface || interface->text(QAccessible::Name).isEmpty())
            nameless += std::string(widget->metaObject()->className()) + " ";
    }
    return nameless;
}

} // namespace tidemark::test
