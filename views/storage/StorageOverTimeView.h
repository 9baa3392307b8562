#pragma once

#include "app/model/GrowthScreen.h"
#include "views/storage/ComparedMoments.h"

#include <QWidget>

class QComboBox;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace tidemark {

class ElidedLabel;
class FolderTree;
class GrowthPane;
class StorageChartView;
class StorageTableModel;
class WrappingLabel;

/// The place of storage over time: the chart of one size, the same as a table, and what grew in the
/// time that it shows. It reads the `GrowthScreen` when `refresh` is called.
class StorageOverTimeView : public QWidget {
    Q_OBJECT

public:
    /// `used` outlives it.
    explicit StorageOverTimeView(GrowthScreen& used, QWidget* parent = nullptr);

    void refresh();
    void setTextScale(double scale);
    /// What is shown, in a line.
    QString summary() const;

Q_SIGNALS:
    void eventChosen(const tidemark::OptionalShared<tidemark::Event>& event);
    /// The user wants to see what changed between two kept captures.
    void comparisonRequested(const tidemark::Uuid& earlier, const tidemark::Uuid& later);

private:
    QWidget* makeControls();
    QWidget* makeChart();
    void connectParts();
    void showChoicesOf(const GrowthScreen::Content& content);
    void showMoments();
    void markAtCursor();
    void showTable(bool isShown);
    void takeCursorOfTable();
    void fitTable();
    std::optional<StorageChart::Point> pointAtCursor() const;

    GrowthScreen& growth;
    std::shared_ptr<const GrowthScreen::Content> shown;
    ComparedMoments moments;
    QComboBox* subjects;
    QComboBox* spans;
    ElidedLabel* marked;
    QPushButton* mark;
    QPushButton* compare;
    QToolButton* asTable;
    WrappingLabel* problem;
    StorageChartView* chart;
    StorageTableModel* rows;
    FolderTree* table;
    QStackedWidget* forms;
    GrowthPane* grown;
};

} // namespace tidemark
