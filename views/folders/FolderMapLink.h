#pragma once

#include "core/presentation/FolderMap.h"

#include <QModelIndex>
#include <QObject>
#include <QStringList>

namespace tidemark {

class FolderMapPane;
class FolderSizeModel;
class FolderTree;

/// Keeps the map and the table of folder sizes at the same folder: what is chosen in one is chosen
/// in the other.
class FolderMapLink : public QObject {
    Q_OBJECT

public:
    /// All of them must outlive this object.
    FolderMapLink(FolderSizeModel& rows, FolderTree& table, FolderMapPane& drawn);

    /// Is called when the rows of the model have changed. `outermost` is the map of its first
    /// level. The map goes on to show the contents of the same folder if that still exists.
    void show(FolderMap outermost);

private:
    /// Shows the contents of the folder at this path of identifiers; all folders for an empty path.
    void enter(const QStringList& path);
    void leave();
    void chooseInTable(const QStringList& path);
    void chooseInMap();
    QModelIndex indexOf(const QStringList& path) const;

    FolderSizeModel& model;
    FolderTree& tree;
    FolderMapPane& pane;
    FolderMap allFolders;
    /// The path of identifiers of the folder whose contents the map shows; empty for all folders.
    QStringList inside;
    /// True while a choice in the map is repeated in the table.
    bool isChoosing = false;
};

} // namespace tidemark
