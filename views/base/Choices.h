#pragma once

#include <QComboBox>
#include <vector>

namespace tidemark {

/// One entry of a list to choose from: the text that is shown, and the value that it stands for.
struct Choice {
    QString label;
    QVariant value;
};

/// Replaces the entries of `box` and selects the one with the index `selected`. The signals of
/// `box` are not emitted, because they mean that the user has chosen an entry.
void showChoices(QComboBox& box, const std::vector<Choice>& choices, int selected);

} // namespace tidemark
