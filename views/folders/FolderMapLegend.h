#pragma once

#include <QPoint>
#include <QWidget>
#include <vector>

namespace tidemark {

/// What the colours and patterns of a map of folder sizes mean.
class FolderMapLegend : public QWidget {
    Q_OBJECT

public:
    explicit FolderMapLegend(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {1, sizeHint().height()}; }
    /// Entries that do not fit go into further lines.
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int lineHeight() const;
    int widthOf(const QString& entry) const;
    /// The place of each entry, measured from the leading edge.
    std::vector<QPoint> placesIn(int width) const;
};

} // namespace tidemark
