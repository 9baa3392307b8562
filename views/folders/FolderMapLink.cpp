#include "views/folders/FolderMapLink.h"

#include "views/folders/FolderMapPane.h"
#include "views/folders/FolderMapView.h"
#include "views/folders/FolderSizeModel.h"
#include "views/folders/FolderTree.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>

namespace tidemark {

namespace {

/// The identifiers from the outermost row to this one.
QStringList pathTo(QModelIndex index) {
    QStringList path;
    for (index = index.siblingAtColumn(0); index.isValid(); index = index.parent())
        path.prepend(index.data(FolderSizeModel::idRole).toString());
    return path;
}

} // namespace

FolderMapLink::FolderMapLink(FolderSizeModel& rows, FolderTree& table, FolderMapPane& drawn)
    : QObject(&drawn), model(rows), tree(table), pane(drawn) {
    connect(tree.selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FolderMapLink::chooseInMap);
    connect(&pane.view(), &FolderMapView::chosen, this,
            [this](const QStringList& path) { chooseInTable(inside + path); });
    connect(&pane.view(), &FolderMapView::openRequested, this, [this](const QStringList& path) {
        // A folder without parts can't be entered; the one around it is entered instead.
        QStringList target = inside + path;
        while (target.size() > inside.size() && !model.hasChildren(indexOf(target)))
            target.removeLast();
        if (target.size() > inside.size())
            enter(target);
    });
    connect(&pane, &FolderMapPane::leaveRequested, this, &FolderMapLink::leave);
    connect(&pane, &FolderMapPane::unmeasuredChosen, this,
            [this](const QString& id) { chooseInTable(inside + QStringList(id)); });
}

void FolderMapLink::show(FolderMap outermost) {
    allFolders = std::move(outermost);
    enter(inside);
}

QModelIndex FolderMapLink::indexOf(const QStringList& path) const {
    QModelIndex index;
    for (const QString& id : path) {
        model.fetchMore(index);
        index = model.find(id, index);
        if (!index.isValid())
            return {};
    }
    return index;
}

void FolderMapLink::enter(const QStringList& path) {
    const QModelIndex index = indexOf(path);
    inside = index.isValid() ? path : QStringList();
    if (!index.isValid()) {
        pane.present(allFolders, {});
        return chooseInMap();
    }
    QStringList names;
    for (QModelIndex each = index; each.isValid(); each = each.parent())
        names.prepend(each.data().toString());
    names.prepend(FolderMapPane::tr("All Folders"));
    pane.present(FolderMap::of(childrenOf(model.rowAt(index))), names);
    chooseInMap();
}

void FolderMapLink::leave() {
    if (inside.isEmpty())
        return;
    const QStringList left = inside;
    enter(inside.mid(0, inside.size() - 1));
    chooseInTable(left);
    chooseInMap();
}

void FolderMapLink::chooseInTable(const QStringList& path) {
    const QModelIndex index = indexOf(path);
    if (!index.isValid())
        return;
    const QScopedValueRollback choosing(isChoosing, true);
    tree.setCurrentIndex(index);
    tree.scrollTo(index);
}

void FolderMapLink::chooseInMap() {
    if (isChoosing)
        return;
    const QStringList path = pathTo(tree.currentIndex());
    if (path.mid(0, inside.size()) != inside || path.size() <= inside.size())
        return pane.view().select({});
    pane.view().select(path.mid(inside.size(), 2));
}

} // namespace tidemark
