#include "views/folders/FolderInspectorView.h"

#include "core/presentation/SystemWords.h"
#include "views/base/Choices.h"
#include "views/base/Fonts.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/folders/FolderMapLink.h"
#include "views/folders/FolderMapPane.h"
#include "views/folders/FolderMapView.h"
#include "views/folders/FolderSizeModel.h"
#include "views/folders/FolderTree.h"
#include "views/workspace/EmptyStateView.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace tidemark {

using Table = FolderSizeTable;

namespace {

/// The width from which the map is beside the table; in a narrower view it is above the table.
constexpr int roomForBoth = 780;
constexpr int firstMapWidth = 510;
constexpr int firstTableWidth = 550;

template <class Value>
QComboBox* choiceOf(std::initializer_list<Value> values) {
    auto* box = new QComboBox;
    std::vector<Choice> choices;
    for (const Value value : values)
        choices.push_back({wordsHere(label(value)), static_cast<int>(value)});
    showChoices(*box, choices, 0);
    return box;
}

void select(QComboBox& box, auto value) {
    box.setCurrentIndex(box.findData(static_cast<int>(value)));
}

QString momentText(Date date) {
    return QString::fromStdString(Calendar().format(date, "d MMM yyyy, HH:mm"));
}

} // namespace

FolderInspectorView::FolderInspectorView(QWidget* parent)
    : QWidget(parent), sizes(new FolderSizeModel(this)), tree(new FolderTree),
      scopes(choiceOf({Table::Scope::event, Table::Scope::allFolders})),
      comparisons(choiceOf({Table::Comparison::previousCapture, Table::Comparison::latestOnly})),
      map(new FolderMapPane), link(nullptr), sides(new QSplitter), stack(new QStackedWidget),
      empty(new EmptyStateView) {
    tree->setModel(sizes);
    link = new FolderMapLink(*sizes, *tree, *map);
    tree->setAccessibleName(wordsHere(Table::title));
    // The rows are in the order of the core until the user chooses one.
    tree->header()->setSortIndicator(-1, Qt::DescendingOrder);
    empty->present({.title = std::string(Table::title),
                    .explanation = systemWords::shown(Table::noFolders),
                    .symbol = "folder"});

    auto* table = new QWidget;
    auto* column = new QVBoxLayout(table);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeControls());
    sides->addWidget(map);
    sides->addWidget(tree);
    sides->setHandleWidth(1);
    sides->setStretchFactor(0, 1);
    sides->setSizes({firstMapWidth, firstTableWidth});
    column->addWidget(sides, 1);
    auto* about = labels::note(wordsHere(Table::about));
    labels::scale(*about, 0.9);
    about->setAccessibleName(wordsHere(Table::aboutTitle));
    about->setContentsMargins(20, 8, 20, 10);
    column->addWidget(about);
    stack->addWidget(table);
    stack->addWidget(empty);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(stack);
    setFocusProxy(tree);
}

QWidget* FolderInspectorView::makeControls() {
    scopes->setAccessibleName(tr("Folders that are shown"));
    comparisons->setAccessibleName(tr("Comparison"));
    auto* controls = new QWidget;
    auto* row = new QHBoxLayout(controls);
    row->setContentsMargins(20, 10, 14, 6);
    row->addWidget(scopes);
    row->addWidget(comparisons);
    row->addStretch();
    for (QComboBox* box : {scopes, comparisons})
        connect(box, &QComboBox::activated, this, &FolderInspectorView::choose);
    return controls;
}

void FolderInspectorView::choose() {
    scope = static_cast<Table::Scope>(scopes->currentData().toInt());
    comparison = static_cast<Table::Comparison>(comparisons->currentData().toInt());
    Q_EMIT contentChanged();
}

void FolderInspectorView::inspect(const OptionalShared<Event>& recorded) {
    event = recorded;
    scope = Table::Scope::event;
}

void FolderInspectorView::present(const Journal& journal) {
    const auto& snapshots = journal.snapshots;
    const Snapshot* latest = snapshots.empty() ? nullptr : &*snapshots.back();
    const Snapshot* previous = snapshots.size() < 2 || comparison == Table::Comparison::latestOnly
                                   ? nullptr
                                   : &*snapshots[snapshots.size() - 2];
    if (!event)
        scope = Table::Scope::allFolders;
    Source source{
        .scope = scope, .comparison = comparison, .event = {}, .previous = {}, .latest = {}};
    if (scope == Table::Scope::event) {
        source.event = event->id;
    } else {
        source.previous = previous ? previous->id : Uuid();
        source.latest = latest ? latest->id : Uuid();
    }
    if (shown == source)
        return;
    shown = source;
    fill(previous, latest);
}

void FolderInspectorView::fill(const Snapshot* previous, const Snapshot* latest) {
    std::vector<FolderInspectionRow> rows;
    if (scope == Table::Scope::event)
        rows = folderSizesOf(*event);
    else if (latest)
        rows = folderSizesOf(previous, *latest);
    scopes->setVisible(event.has_value());
    comparisons->setVisible(scope == Table::Scope::allFolders);
    select(*scopes, scope);
    select(*comparisons, comparison);
    stack->setCurrentIndex(rows.empty() ? 1 : 0);
    shownSummary = describe(rows.size(), previous, latest);

    const auto opened = openRows();
    const QString current = tree->currentIndex().data(FolderSizeModel::idRole).toString();
    const int scrolled = tree->verticalScrollBar()->value();
    const bool isSingle = rows.size() == 1;
    FolderMap outermost = FolderMap::of(rows);
    sizes->show(std::move(rows), headersOf(scope, comparison));
    tree->fitColumns();
    open(opened);
    if (isSingle)
        openRow(sizes->index(0, 0));
    tree->setCurrentIndex(sizes->find(current));
    tree->verticalScrollBar()->setValue(scrolled);
    link->show(std::move(outermost));
}

void FolderInspectorView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    sides->setOrientation(width() < roomForBoth ? Qt::Vertical : Qt::Horizontal);
}

std::set<QString> FolderInspectorView::openRows(const QModelIndex& parent) const {
    std::set<QString> ids;
    for (int row = 0; row < sizes->rowCount(parent); ++row) {
        const QModelIndex index = sizes->index(row, 0, parent);
        if (!tree->isExpanded(index))
            continue;
        ids.insert(index.data(FolderSizeModel::idRole).toString());
        ids.merge(openRows(index));
    }
    return ids;
}

void FolderInspectorView::openRow(const QModelIndex& index) {
    // Otherwise the tree would fetch these rows only when it is laid out next, after `fill` has
    // restored the scroll position.
    sizes->fetchMore(index);
    tree->expand(index);
}

void FolderInspectorView::open(const std::set<QString>& ids, const QModelIndex& parent) {
    for (int row = 0; row < sizes->rowCount(parent); ++row) {
        const QModelIndex index = sizes->index(row, 0, parent);
        if (!ids.contains(index.data(FolderSizeModel::idRole).toString()))
            continue;
        openRow(index);
        open(ids, index);
    }
}

QString FolderInspectorView::describe(std::size_t folders, const Snapshot* previous,
                                      const Snapshot* latest) const {
    QString count = folders == 1 ? tr("1 folder") : tr("%1 folders").arg(folders);
    if (scope == Table::Scope::event)
        return tr("%1 · recorded %2").arg(count, momentText(event->timestamp));
    if (!latest)
        return count;
    if (!previous)
        return tr("%1 · recorded %2").arg(count, momentText(latest->timestamp));
    return tr("%1 · compared with %2").arg(count, momentText(previous->timestamp));
}

void FolderInspectorView::setTextScale(double scale) {
    const QFont sized = fonts::ofApplication(scale);
    if (sized.pointSizeF() == tree->font().pointSizeF())
        return;
    tree->setFont(sized);
    tree->fitColumns();
}

} // namespace tidemark
