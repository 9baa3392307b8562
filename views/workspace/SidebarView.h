#pragma once

#include "core/presentation/Sidebar.h"

#include <QWidget>

class QKeyEvent;
class QListView;
class QMouseEvent;
class QToolButton;

namespace tidemark {

class SidebarModel;

/// The places and the saved snapshots, and below them the command that saves another one.
class SidebarView : public QWidget {
    Q_OBJECT

public:
    explicit SidebarView(QWidget* parent = nullptr);

    /// The selection follows `rows` and is not reported as a choice.
    void present(std::vector<SidebarRow> rows);

Q_SIGNALS:
    // What the user chose.
    void placeChosen(tidemark::WorkspaceDestination place);
    void snapshotChosen(const tidemark::Uuid& id);
    void filterToggled(tidemark::WorkspaceDestination place);
    void deletionRequested(const tidemark::Uuid& id);
    void saveRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void reportChoice(const QModelIndex& index);
    void showMenu(const QPoint& position);
    // Handles what the list does not do itself; returns true when it did.
    bool press(const QKeyEvent& key);
    bool press(const QMouseEvent& mouse);

    SidebarModel* places;
    QListView* list;
    QToolButton* save;
    bool isFollowing = false;
};

} // namespace tidemark
