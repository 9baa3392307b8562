#pragma once

#include "views/workspace/TimelineModel.h"

#include <QListView>

namespace tidemark {

/// The list of events. When events are added at the top, the rows that the user reads stay in their
/// place, unless the list is scrolled to the very top.
class TimelineView : public QListView {
    Q_OBJECT

public:
    explicit TimelineView(QWidget* parent = nullptr);

    void present(const TimelinePresentation& presentation, Date now,
                 const std::vector<GapRow>& gaps = {});
    /// Selects the event with this identifier, or none.
    void select(const std::string* id);
    /// `scale` is relative to the other texts of the window.
    void setTextScale(double scale);

Q_SIGNALS:
    /// The user chose an event; absent for none.
    void eventChosen(const tidemark::OptionalShared<tidemark::Event>& event);
    /// The user folded or unfolded the gaps of a day. The list shows this with the next `present`.
    void gapsToggled();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    bool toggleGaps(const QModelIndex& index);

    TimelineModel events;
    bool isUpdating = false;
    /// True when the present click has folded or unfolded gaps: it was not meant for the row that
    /// is below the pointer afterwards.
    bool hasToggled = false;
};

} // namespace tidemark
