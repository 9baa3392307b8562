#include "views/folders/DeveloperSuggestionsView.h"

#include "views/base/Labels.h"
#include "views/base/ShownText.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace tidemark {

DeveloperSuggestionsView::DeveloperSuggestionsView(QWidget* parent)
    : QWidget(parent), note(labels::note({})), rows(new QVBoxLayout),
      monitor(new QPushButton(wordsHere(developerSuggestions::monitorSelected))) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    rows->setSpacing(6);
    column->addWidget(labels::heading(wordsHere(developerSuggestions::heading)));
    column->addWidget(note);
    column->addLayout(rows);
    column->addWidget(monitor, 0, Qt::AlignLeading);
    connect(monitor, &QPushButton::clicked, this, [this] { Q_EMIT chosen(ticked()); });
    present({});
}

void DeveloperSuggestionsView::present(const std::vector<DeveloperFolderSuggestion>& suggestions) {
    note->setText(wordsHere(suggestions.empty() ? developerSuggestions::none
                                                : developerSuggestions::explanation));
    monitor->setVisible(!suggestions.empty());
    if (suggestions == shown && !shown.empty())
        return;
    const auto before = ticked();
    while (auto* item = rows->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    boxes.clear();
    shown = suggestions;
    for (const auto& suggestion : shown)
        addRow(suggestion, !suggestion.isCovered && std::ranges::count(before, suggestion.url) > 0);
    refreshButton();
}

void DeveloperSuggestionsView::addRow(const DeveloperFolderSuggestion& suggestion, bool isTicked) {
    auto* box = new QCheckBox(shownText(suggestion.title));
    const std::string_view detail =
        suggestion.isCovered ? developerSuggestions::covered : std::string_view(suggestion.detail);
    box->setChecked(isTicked);
    box->setEnabled(!suggestion.isCovered);
    box->setAccessibleDescription(wordsHere(detail));
    connect(box, &QCheckBox::toggled, this, &DeveloperSuggestionsView::refreshButton);
    auto* row = new QWidget;
    auto* texts = new QVBoxLayout(row);
    texts->setContentsMargins(0, 0, 0, 0);
    texts->setSpacing(0);
    texts->addWidget(box);
    texts->addWidget(labels::note(wordsHere(detail)));
    rows->addWidget(row);
    boxes.push_back(box);
}

std::vector<std::filesystem::path> DeveloperSuggestionsView::ticked() const {
    std::vector<std::filesystem::path> folders;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        if (boxes[i]->isChecked())
            folders.push_back(shown[i].url);
    return folders;
}

void DeveloperSuggestionsView::refreshButton() {
    monitor->setEnabled(!ticked().empty());
}

} // namespace tidemark
