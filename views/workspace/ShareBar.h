#pragma once

#include <QWidget>

namespace tidemark {

/// A bar whose length is a share of the available width, -1 to 1. What shrank is drawn dim.
class ShareBar : public QWidget {
    Q_OBJECT

public:
    explicit ShareBar(double wanted, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const double share;
};

} // namespace tidemark
