#pragma once

#include "core/presentation/Inspection.h"

#include <QWidget>

namespace tidemark {

/// One section of the inspector: its heading, its rows, its changes, its sentences. The columns of
/// all sections are equally wide.
class InspectionSectionView : public QWidget {
    Q_OBJECT

public:
    explicit InspectionSectionView(const InspectionSection& section, QWidget* parent = nullptr);
};

} // namespace tidemark
