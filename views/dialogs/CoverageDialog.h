#pragma once

#include "core/presentation/CoverageList.h"

#include <QDialog>

namespace tidemark {

/// Shows when nothing was captured, and what captures could not read.
class CoverageDialog : public QDialog {
    Q_OBJECT

public:
    CoverageDialog(const CoverageList& list, QWidget* parent);
};

} // namespace tidemark
