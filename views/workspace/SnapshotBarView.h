#pragma once

#include "core/presentation/SnapshotBar.h"

#include <QWidget>

class QComboBox;
class QToolButton;

namespace tidemark {

class DimLabel;

/// The bar above the list while a named snapshot is open: what of it is shown, a note, and its
/// deletion.
class SnapshotBarView : public QWidget {
    Q_OBJECT

public:
    explicit SnapshotBarView(QWidget* parent = nullptr);

    void present(const SnapshotBar& bar);

Q_SIGNALS:
    void modeChosen(tidemark::SnapshotViewMode mode);
    void deletionRequested();

private:
    QComboBox* modes;
    DimLabel* note;
};

} // namespace tidemark
