#include "views/base/AccessibleParts.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>
#include <map>

namespace tidemark {

namespace {

AccessibleParts* partsOf(QObject* object) {
    return dynamic_cast<AccessibleParts*>(object);
}

/// One part of a widget.
class Part final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Part(QWidget& owner, int index) : widget(owner), number(index) {}

    bool isValid() const override { return number < parts().partCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override {
        const QWidget* top = widget.window();
        return top ? top->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&widget);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? parts().partText(number) : QString();
    }
    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect area = parts().partArea(number);
        return {widget.mapToGlobal(area.topLeft()), area.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.selectable = true;
        state.selected = parts().currentPart() == number;
        state.focused = state.selected && widget.hasFocus();
        state.invisible = !widget.isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override {
        if (!isValid())
            return;
        if (action == pressAction() || action == setFocusAction())
            parts().choosePart(number);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    AccessibleParts& parts() const { return *partsOf(&widget); }

    QWidget& widget;
    const int number;
};

/// A widget and its parts, which are made when a screen reader asks for them.
class Whole final : public QAccessibleWidget {
public:
    explicit Whole(QWidget* owner) : QAccessibleWidget(owner, QAccessible::List) {}
    ~Whole() override {
        for (const auto& [number, id] : made)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return parts() ? parts()->partCount() : 0; }
    QAccessibleInterface* child(int number) const override {
        if (number < 0 || number >= childCount())
            return nullptr;
        if (const auto found = made.find(number); found != made.end())
            return QAccessible::accessibleInterface(found->second);
        auto* part = new Part(*widget(), number);
        made.emplace(number, QAccessible::registerAccessibleInterface(part));
        return part;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint at = widget()->mapFromGlobal(QPoint(x, y));
        // Where parts overlap, the last one lies on top.
        for (int number = childCount() - 1; number >= 0; --number)
            if (parts()->partArea(number).contains(at))
                return child(number);
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (const auto& [number, id] : made)
            if (QAccessible::accessibleInterface(id) == wanted)
                return number;
        return -1;
    }
    QAccessibleInterface* focusChild() const override {
        return widget()->hasFocus() && parts() ? child(parts()->currentPart()) : nullptr;
    }

private:
    /// Null while the widget is being destroyed.
    AccessibleParts* parts() const { return partsOf(object()); }

    mutable std::map<int, QAccessible::Id> made;
};

QAccessibleInterface* interfaceFor(const QString&, QObject* object) {
    if (!object || !object->isWidgetType() || !partsOf(object))
        return nullptr;
    return new Whole(static_cast<QWidget*>(object));
}

} // namespace

namespace accessibleParts {

void install() {
    static const bool once = [] {
        QAccessible::installFactory(interfaceFor);
        return true;
    }();
    static_cast<void>(once);
}

void announceCurrent(QWidget& widget) {
    const AccessibleParts* parts = partsOf(&widget);
    if (!parts || parts->currentPart() < 0)
        return;
    QAccessibleEvent event(&widget, QAccessible::Focus);
    event.setChild(parts->currentPart());
    QAccessible::updateAccessibility(&event);
}

void announceReset(QWidget& widget) {
    QAccessibleEvent event(&widget, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

} // namespace accessibleParts

} // namespace tidemark
