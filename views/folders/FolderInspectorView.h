#pragma once

#include "core/journal/Journal.h"
#include "core/presentation/FolderSizeTable.h"

#include <QModelIndex>
#include <QWidget>
#include <set>

class QComboBox;
class QSplitter;
class QStackedWidget;

namespace tidemark {

class EmptyStateView;
class FolderMapLink;
class FolderMapPane;
class FolderSizeModel;
class FolderTree;

/// The recorded sizes of folders as a map and a tree table: of all folders, or those that one event
/// recorded.
class FolderInspectorView : public QWidget {
    Q_OBJECT

public:
    explicit FolderInspectorView(QWidget* parent = nullptr);

    /// From the next `present` on, the sizes that this event recorded are shown, until the user
    /// chooses another scope.
    void inspect(const OptionalShared<Event>& recorded);
    /// Shows the sizes of the chosen scope: those of the event, or the newest of the journal. Open
    /// rows stay open when there are newer sizes.
    void present(const Journal& journal);
    void setTextScale(double scale);
    /// What is shown, in a line.
    QString summary() const { return shownSummary; }

protected:
    void resizeEvent(QResizeEvent* event) override;

Q_SIGNALS:
    /// The user chose another scope or comparison, which the next `present` shows.
    void contentChanged();

private:
    /// What the table was made from.
    struct Source {
        FolderSizeTable::Scope scope;
        FolderSizeTable::Comparison comparison;
        std::string event;
        Uuid previous;
        Uuid latest;

        bool operator==(const Source&) const = default;
    };

    QWidget* makeControls();
    void choose();
    void fill(const Snapshot* previous, const Snapshot* latest);
    std::set<QString> openRows(const QModelIndex& parent = {}) const;
    void openRow(const QModelIndex& index);
    void open(const std::set<QString>& ids, const QModelIndex& parent = {});
    QString describe(std::size_t folders, const Snapshot* previous, const Snapshot* latest) const;

    FolderSizeModel* sizes;
    FolderTree* tree;
    QComboBox* scopes;
    QComboBox* comparisons;
    FolderMapPane* map;
    FolderMapLink* link;
    QSplitter* sides;
    QStackedWidget* stack;
    EmptyStateView* empty;
    FolderSizeTable::Scope scope = FolderSizeTable::Scope::allFolders;
    FolderSizeTable::Comparison comparison = FolderSizeTable::Comparison::previousCapture;
    OptionalShared<Event> event;
    std::optional<Source> shown;
    QString shownSummary;
};

} // namespace tidemark
