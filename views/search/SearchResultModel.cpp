#include "views/search/SearchResultModel.h"

#include "views/base/EventText.h"
#include "views/base/ShownText.h"

#include <algorithm>

namespace tidemark {

namespace {

/// The texts of a result in the language of the user.
SearchResultRow rowOf(const Event& event, const Calendar& calendar) {
    SearchResultRow row = SearchResultRow::of(event, calendar);
    row.title = eventText::title(event).toStdString();
    row.subtitle = eventText::subtitle(event).toStdString();
    row.category = shownText(row.category).toStdString();
    return row;
}

} // namespace

void SearchResultModel::show(const std::vector<Shared<Event>>& next) {
    if (std::ranges::equal(
            results, next, {}, [](const Result& result) { return &*result.event; },
            [](const Shared<Event>& event) { return &*event; }))
        return;
    beginResetModel();
    results.clear();
    for (const auto& event : next)
        results.push_back({event, rowOf(*event, calendar)});
    endResetModel();
}

QModelIndex SearchResultModel::indexOf(const std::optional<std::string>& id) const {
    for (std::size_t i = 0; i < results.size(); ++i)
        if (id && results[i].event->id == *id)
            return index(static_cast<int>(i), 0);
    return {};
}

const std::string& SearchResultModel::idAt(const QModelIndex& index) const {
    return results.at(static_cast<std::size_t>(index.row())).event->id;
}

int SearchResultModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(results.size());
}

QVariant SearchResultModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& row = results[static_cast<std::size_t>(index.row())].row;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return asPlainText(QString::fromStdString(row.title));
    case Qt::AccessibleTextRole:
        return QString::fromStdString(row.accessibleText());
    case rowRole:
        return QVariant::fromValue(row);
    default:
        return {};
    }
}

} // namespace tidemark
