#pragma once

#include "core/presentation/FolderMapLayout.h"
#include "views/base/AccessibleParts.h"

#include <QStringList>
#include <QWidget>

namespace tidemark {

/// A treemap of folder sizes. A tile is identified by a path of one or two identifiers: that of a
/// folder at the outermost level of the map, and for a part of the folder also that of the part.
class FolderMapView : public QWidget, public AccessibleParts {
    Q_OBJECT

public:
    explicit FolderMapView(QWidget* parent = nullptr);

    void present(FolderMap map);
    /// Marks the tile with this path, or none if there is no such tile. A tile that combines
    /// several parts has the path of their folder: if one of these is marked, it stays marked when
    /// `path` is that of its folder.
    void select(const QStringList& path);
    const FolderMapLayout& layoutShown() const { return layout; }

    int partCount() const override { return static_cast<int>(layout.tiles.size()); }
    QString partText(int part) const override;
    QRect partArea(int part) const override;
    int currentPart() const override { return current; }
    void choosePart(int part) override;

    QSize sizeHint() const override { return {480, 400}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

Q_SIGNALS:
    void chosen(const QStringList& path);
    /// The user wants to see what is inside of the tile.
    void openRequested(const QStringList& path);
    /// The user wants to see the folder around what is shown.
    void leaveRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    void lay();
    void move(FolderMapLayout::Direction direction);
    int at(const QPointF& position) const;
    QStringList pathOf(int part) const;
    QString tipOf(int part) const;

    FolderMap map;
    FolderMapLayout layout;
    QStringList selected;
    int current = -1;
    int hovered = -1;
};

} // namespace tidemark
