#include "views/base/Choices.h"

#include <QSignalBlocker>

namespace tidemark {

void showChoices(QComboBox& box, const std::vector<Choice>& choices, int selected) {
    const QSignalBlocker blocker(box);
    // Entries that stay are kept, because a reset would close an open list.
    while (box.count() > static_cast<int>(choices.size()))
        box.removeItem(box.count() - 1);
    for (int i = 0; i < static_cast<int>(choices.size()); ++i) {
        const auto& [label, value] = choices[static_cast<std::size_t>(i)];
        if (i >= box.count())
            box.addItem(label, value);
        if (box.itemText(i) != label)
            box.setItemText(i, label);
        box.setItemData(i, value);
    }
    box.setCurrentIndex(selected);
}

} // namespace tidemark
