#include "views/base/RoomyButtons.h"

#include <QApplication>
#include <QProxyStyle>
#include <algorithm>

namespace tidemark {

namespace {

/// At each side of the text.
constexpr int room = 12;

class RoomyButtons final : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_PushButton)
            size.setWidth(std::max(size.width(), contents.width() + 2 * room));
        return size;
    }
};

} // namespace

void useRoomyButtons() {
    QApplication::setStyle(new RoomyButtons(QApplication::style()->name()));
}

} // namespace tidemark
