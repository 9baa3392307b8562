#include "views/base/GrowToFit.h"

#include <QLayout>
#include <QWidget>

namespace tidemark {

void growToFit(QWidget& dialog) {
    QLayout& layout = *dialog.layout();
    layout.activate();
    const int needed = layout.hasHeightForWidth() ? layout.totalHeightForWidth(dialog.width())
                                                  : layout.totalSizeHint().height();
    if (dialog.height() < needed)
        dialog.resize(dialog.width(), needed);
}

} // namespace tidemark
