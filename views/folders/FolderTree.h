#pragma once

#include <QTreeView>

namespace tidemark {

/// A tree table whose selected row is one rounded panel.
class FolderTree : public QTreeView {
    Q_OBJECT

public:
    explicit FolderTree(QWidget* parent = nullptr);

    /// Gives the columns of numbers the width that a size needs, and the rest to the names.
    void fitColumns();

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect,
                      const QModelIndex& index) const override;

private:
    void coverBranches(QPainter& painter, const QRect& rect, const QModelIndex& index) const;
};

} // namespace tidemark
