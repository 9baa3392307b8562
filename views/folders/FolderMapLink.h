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
    /// All of them outlive it.
    FolderMapLink(FolderSizeModel& rows, FolderTree& table, FolderMapPane& drawn);

    /// The model has other rows; `outermost` is the map of its first level. The map stays inside of
    /// the same folder while that exists.
    void show(FolderMap outermost);

private:
    /// Shows the folder with this path of identifiers from the inside; all folders for none.
    void enter(const QStringList& path);
    void leave();
    void chooseInTable(const QStringList& path);
    void chooseInMap();
    QModelIndex indexOf(const QStringList& path) const;

    FolderSizeModel& model;
    FolderTree& tree;
    FolderMapPane& pane;
    FolderMap allFolders;
    /// The identifiers of the folders that the map is inside of.
    QStringList inside;
    bool isChoosing = false;
};

} // namespace tidemark
