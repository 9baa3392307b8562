#include "views/workspace/TimelineModel.h"

#include "views/base/EventText.h"
#include "views/base/ShownText.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

/// Between the parts of a sentence for a screen reader.
constexpr std::string_view separator = ", ";

/// The texts of an event in the language of the user.
EventRow rowOf(const Event& event, const Calendar& calendar) {
    EventRow row = EventRow::of(event, calendar);
    const QString title = eventText::title(event);
    const QString subtitle = eventText::subtitle(event);
    std::string_view rest = row.accessibleText;
    rest.remove_prefix(row.title.size());
    if (!row.subtitle.empty())
        rest.remove_prefix(separator.size() + row.subtitle.size());
    const QString spoken = subtitle.isEmpty() ? title : title + QStringLiteral(", ") + subtitle;
    row.accessibleText = (spoken + shownParts(rest, separator)).toStdString();
    row.title = title.toStdString();
    row.subtitle = subtitle.toStdString();
    return row;
}

} // namespace

void TimelineModel::show(const TimelinePresentation& presentation, Date now,
                         const std::vector<GapRow>& gaps) {
    auto next = TimelineRows::of(presentation, gaps, unfolded, Calendar());
    const auto head = std::ranges::mismatch(rows, next).in1 - rows.begin();
    const auto shorter = static_cast<std::ptrdiff_t>(std::min(rows.size(), next.size()));
    std::ptrdiff_t tail = 0;
    while (tail < shorter - head && *(rows.end() - tail - 1) == *(next.end() - tail - 1))
        ++tail;

    const auto removedEnd = rows.end() - tail;
    if (rows.begin() + head != removedEnd) {
        beginRemoveRows({}, static_cast<int>(head),
                        static_cast<int>(rows.size()) - static_cast<int>(tail) - 1);
        rows.erase(rows.begin() + head, removedEnd);
        endRemoveRows();
    }
    const auto addedEnd = next.end() - tail;
    if (next.begin() + head != addedEnd) {
        beginInsertRows({}, static_cast<int>(head),
                        static_cast<int>(next.size()) - static_cast<int>(tail) - 1);
        rows.insert(rows.begin() + head, next.begin() + head, addedEnd);
        endInsertRows();
    }
    takeCounts(next);
    const bool isOtherDay = calendar.startOfDay(now) != calendar.startOfDay(shownAt);
    calendar = Calendar();
    shownAt = now;
    // The heading "Today" becomes "Yesterday".
    if (isOtherDay && !rows.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

void TimelineModel::takeCounts(const std::vector<TimelineRow>& next) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (std::exchange(rows[i].count, next[i].count) != next[i].count) {
            const auto changed = index(static_cast<int>(i));
            Q_EMIT dataChanged(changed, changed);
        }
}

bool TimelineModel::toggleGaps(const QModelIndex& index) {
    if (!index.isValid())
        return false;
    const TimelineRow& row = rows[static_cast<std::size_t>(index.row())];
    if (!row.gap)
        return false;
    const Date day = calendar.startOfDay(row.gap->end);
    if (unfolded.erase(day) == 0)
        unfolded.insert(day);
    return true;
}

const EventRow& TimelineModel::textsOf(int row) const {
    const auto& event = rows[static_cast<std::size_t>(row)].event;
    if (lastTexts.first.object() != event.object())
        lastTexts = {event, rowOf(*event, calendar)};
    return lastTexts.second;
}

OptionalShared<Event> TimelineModel::eventAt(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    return rows[static_cast<std::size_t>(index.row())].event;
}

QModelIndex TimelineModel::indexOf(const std::string& id) const {
    const auto found = std::ranges::find_if(
        rows, [&](const TimelineRow& row) { return row.event && row.event->id == id; });
    return found == rows.end() ? QModelIndex() : index(static_cast<int>(found - rows.begin()));
}

int TimelineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

QVariant TimelineModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const TimelineRow& row = rows[static_cast<std::size_t>(index.row())];
    if (row.gap)
        return gapData(row, role);
    if (!row.event)
        return dayData(row, role);
    switch (role) {
    case kindRole:
        return static_cast<int>(row.event->observationGap ? RowKind::gap : RowKind::event);
    case Qt::DisplayRole:
        return QString::fromStdString(textsOf(index.row()).title);
    case Qt::AccessibleTextRole:
        return QString::fromStdString(textsOf(index.row()).accessibleText);
    case rowRole:
        return QVariant::fromValue(textsOf(index.row()));
    case idRole:
        return QString::fromStdString(row.event->id);
    default:
        return {};
    }
}

QVariant TimelineModel::gapData(const TimelineRow& row, int role) const {
    switch (role) {
    case kindRole:
        return static_cast<int>(row.kind == TimelineRow::Kind::gaps ? RowKind::gaps : RowKind::gap);
    case Qt::DisplayRole:
        return shownText(row.gap->title);
    case Qt::AccessibleTextRole:
        return row.kind == TimelineRow::Kind::gaps
                   ? tr("%1, folded").arg(shownText(row.gap->accessibleText))
                   : spokenText(row.gap->accessibleText, row.gap->title, shownText(row.gap->title));
    case Qt::ToolTipRole:
        return row.gap->times.empty() ? QVariant() : isolated(shownPart(row.gap->times));
    case rowRole: {
        EventRow texts = eventRowOf(*row.gap);
        texts.title = shownText(texts.title).toStdString();
        texts.subtitle = wordsHere(texts.subtitle).toStdString();
        return QVariant::fromValue(texts);
    }
    case idRole:
        return row.event ? QVariant(QString::fromStdString(row.event->id)) : QVariant();
    default:
        return {};
    }
}

QVariant TimelineModel::dayData(const TimelineRow& row, int role) const {
    const auto heading = [&] { return shownText(dayHeading(row.day, shownAt, calendar)); };
    const auto count = [&] {
        return row.count == 1 ? tr("1 event") : tr("%1 events").arg(row.count);
    };
    switch (role) {
    case kindRole:
        return static_cast<int>(RowKind::day);
    case Qt::DisplayRole:
        return heading();
    case Qt::AccessibleTextRole:
        return QString(heading() + QStringLiteral(", ") + count());
    case countRole:
        return count();
    default:
        return {};
    }
}

Qt::ItemFlags TimelineModel::flags(const QModelIndex& index) const {
    // The arrow keys step over a row without flags.
    if (kindOf(index) == RowKind::day)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace tidemark
