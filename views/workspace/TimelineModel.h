#pragma once

#include "core/presentation/EventRow.h"
#include "core/timeline/TimelinePresentation.h"

#include <QAbstractListModel>
#include <optional>

namespace tidemark {

/// The events of the list, each day below a row with its heading. The texts of a row are made when
/// they are asked for, which a view does for what it paints: a history has 22,000 events. A new
/// presentation replaces only the rows that differ, so that the view keeps its place.
class TimelineModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum class RowKind { day, event, gap };
    enum Role {
        /// An `EventRow`; invalid for the heading of a day.
        rowRole = Qt::UserRole,
        /// A `RowKind` as a number.
        kindRole,
        /// The number of events of a day, in words.
        countRole,
        /// The identifier of the event.
        idRole,
    };
    static RowKind kindOf(const QModelIndex& index) {
        return static_cast<RowKind>(index.data(kindRole).toInt());
    }

    using QAbstractListModel::QAbstractListModel;

    /// `now` is what "Today" is meant against.
    void show(const TimelinePresentation& presentation, Date now);

    /// Absent for the heading of a day.
    OptionalShared<Event> eventAt(const QModelIndex& index) const;
    /// Invalid when no event has that identifier.
    QModelIndex indexOf(const std::string& id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Row {
        Date day;
        /// Absent in the heading of the day.
        OptionalShared<Event> event{};
        /// In the heading, the number of events of the day.
        std::size_t count = 0;

        bool operator==(const Row& other) const {
            return day == other.day && event.object() == other.event.object();
        }
    };

    static std::vector<Row> rowsOf(const TimelinePresentation& presentation);
    void takeCounts(const std::vector<Row>& next);
    const EventRow& textsOf(int row) const;
    QVariant dayData(const Row& row, int role) const;

    std::vector<Row> rows;
    Calendar calendar;
    Date shownAt;
    /// A view asks for several roles of a row, one after the other.
    mutable std::pair<OptionalShared<Event>, EventRow> lastTexts;
};

} // namespace tidemark

Q_DECLARE_METATYPE(tidemark::EventRow)
