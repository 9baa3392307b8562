#pragma once

#include <QComboBox>
#include <vector>

namespace tidemark {

/// One entry of a choice: what is shown, and the value that stands for it.
struct Choice {
    QString label;
    QVariant value;
};

/// Replaces the entries of a choice without announcing that as a choice of the user.
void showChoices(QComboBox& box, const std::vector<Choice>& choices, int selected);

} // namespace tidemark
