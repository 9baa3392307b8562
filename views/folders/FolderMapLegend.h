#pragma once

#include <QWidget>

namespace tidemark {

/// What the colours and patterns of a map of folder sizes mean.
class FolderMapLegend : public QWidget {
    Q_OBJECT

public:
    explicit FolderMapLegend(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {1, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
};

} // namespace tidemark
