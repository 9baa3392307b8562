#pragma once

#include "core/base/Calendar.h"
#include "core/presentation/SearchPanel.h"
#include "core/records/Event.h"

#include <QAbstractListModel>
#include <vector>

namespace tidemark {

/// The results of a search. There are few, so their texts are made at once.
class SearchResultModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// A `SearchResultRow`.
    static constexpr int rowRole = Qt::UserRole;

    using QAbstractListModel::QAbstractListModel;

    void show(const std::vector<Shared<Event>>& results);
    /// Invalid when no result has that identifier.
    QModelIndex indexOf(const std::optional<std::string>& id) const;
    const std::string& idAt(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Result {
        Shared<Event> event;
        SearchResultRow row;
    };

    std::vector<Result> results;
    Calendar calendar;
};

} // namespace tidemark

Q_DECLARE_METATYPE(tidemark::SearchResultRow)
