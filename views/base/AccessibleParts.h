#pragma once

#include <QRect>
#include <QString>

class QWidget;

namespace tidemark {

/// Describes to a screen reader the parts that a widget paints itself, such as the tiles of a map.
/// A widget class derives from it and calls `accessibleParts::install` when it is made; each part
/// is then a child of the widget for assistive programs. Parts have numbers from 0.
class AccessibleParts {
public:
    AccessibleParts() = default;
    AccessibleParts(const AccessibleParts&) = delete;
    AccessibleParts& operator=(const AccessibleParts&) = delete;
    virtual ~AccessibleParts() = default;

    virtual int partCount() const = 0;
    /// What the part shows, in one sentence.
    virtual QString partText(int part) const = 0;
    /// The area of the part, in coordinates of the widget.
    virtual QRect partArea(int part) const = 0;
    /// The part that the keyboard is at; -1 for none.
    virtual int currentPart() const = 0;
    virtual void choosePart(int part) = 0;
};

namespace accessibleParts {

/// From now on assistive programs see the parts of all widgets that have some.
void install();
/// Has a screen reader say the part that is the current one now.
void announceCurrent(QWidget& widget);
/// To be called when the widget has other parts than before.
void announceReset(QWidget& widget);

} // namespace accessibleParts

} // namespace tidemark
