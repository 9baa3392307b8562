#pragma once

#include "core/presentation/FolderMap.h"

#include <QStringList>
#include <QWidget>

class QHBoxLayout;
class QToolButton;

namespace tidemark {

class ElidedLabel;
class FolderMapLegend;
class FolderMapView;

/// A map of folder sizes with what belongs to it: where in the folders it is, what is not part of
/// it because its size is not known, and what its colours mean.
class FolderMapPane : public QWidget {
    Q_OBJECT

public:
    explicit FolderMapPane(QWidget* parent = nullptr);

    /// `around` are the names of the folders that the map is inside of, the outermost first.
    void present(FolderMap map, const QStringList& around);
    FolderMapView& view() { return *mapView; }

Q_SIGNALS:
    void leaveRequested();
    /// The user chose a folder that has no area in the map, because its size is not known.
    void unmeasuredChosen(const QString& id);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showUnmeasured(const std::vector<FolderMap::Unmeasured>& unmeasured);

    QWidget* head;
    QToolButton* leave;
    ElidedLabel* where;
    FolderMapView* mapView;
    QWidget* unmeasuredPanel;
    QHBoxLayout* unmeasuredButtons;
    FolderMapLegend* legend;
};

} // namespace tidemark
