#pragma once

#include <QWidget>

namespace tidemark {

class DimLabel;

/// The bar above the list while two captures are compared: which ones, and the way back.
class CaptureComparisonBar : public QWidget {
    Q_OBJECT

public:
    explicit CaptureComparisonBar(QWidget* parent = nullptr);

    /// The two captures, the earlier one first.
    void present(const QString& from, const QString& to);

Q_SIGNALS:
    void closed();

private:
    DimLabel* note;
};

} // namespace tidemark
