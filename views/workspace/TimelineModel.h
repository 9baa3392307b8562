#pragma once

#include "core/growth/TimelineRows.h"

#include <QAbstractListModel>
#include <optional>

namespace tidemark {

/// The events of the list, each day below a row with its heading. The texts of a row are made only
/// when a view asks for them, which it does for the rows that it paints: a history can have 22,000
/// events. A new presentation replaces only the rows that differ, so that the view keeps its place.
class TimelineModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum class RowKind { day, event, gap, gaps };
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

    /// `now` determines which day is "Today".
    void show(const TimelinePresentation& presentation, Date now,
              const std::vector<GapRow>& gaps = {});
    /// Folds the gaps of the day of this row, or unfolds them; this takes effect with the next
    /// `show`. False for a row that is no gap.
    bool toggleGaps(const QModelIndex& index);

    /// Absent for the heading of a day, and for a gap without an event.
    OptionalShared<Event> eventAt(const QModelIndex& index) const;
    /// Invalid when no event has that identifier.
    QModelIndex indexOf(const std::string& id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    void takeCounts(const std::vector<TimelineRow>& next);
    const EventRow& textsOf(int row) const;
    QVariant dayData(const TimelineRow& row, int role) const;
    QVariant gapData(const TimelineRow& row, int role) const;

    std::vector<TimelineRow> rows;
    /// The starts of the days whose gaps the user unfolded.
    std::set<Date> unfolded;
    Calendar calendar;
    Date shownAt;
    /// A view asks for several roles of a row, one after the other.
    mutable std::pair<OptionalShared<Event>, EventRow> lastTexts;
};

} // namespace tidemark

Q_DECLARE_METATYPE(tidemark::EventRow)
