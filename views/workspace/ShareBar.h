#pragma once

#include <QWidget>

namespace tidemark {

/// A bar that is as long as a share of the available width, -1 to 1. A negative share means that
/// something shrank, and its bar is drawn dim.
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
