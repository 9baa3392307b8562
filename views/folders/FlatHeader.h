#pragma once

#include <QHeaderView>

namespace tidemark {

/// The header of a table on the background of the table, with a line below it.
class FlatHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit FlatHeader(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
};

} // namespace tidemark
