#pragma once

#include "core/growth/GrowthReport.h"

#include <QWidget>

namespace tidemark {

class DimLabel;
class FolderTree;
class GrowthModel;
class WrappingLabel;

/// What grew: the change of free space in a sentence, and the folders and applications whose size
/// changed.
class GrowthPane : public QWidget {
    Q_OBJECT

public:
    explicit GrowthPane(QWidget* parent = nullptr);

    void present(const GrowthReport& report);
    void setTextScale(double scale);

Q_SIGNALS:
    /// The user wants to see the chart of this folder.
    void folderChosen(const QString& path);

private:
    GrowthModel* items;
    FolderTree* list;
    DimLabel* period;
    WrappingLabel* summary;
    DimLabel* remarks;
};

} // namespace tidemark
