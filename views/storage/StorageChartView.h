#pragma once

#include "core/growth/ChartLayout.h"
#include "core/growth/ChartReading.h"
#include "views/base/AccessibleParts.h"
#include "views/storage/ComparedMoments.h"

#include <QWidget>
#include <memory>

namespace tidemark {

/// A size over time. The cursor stands at a point of the chart, and is moved by the pointer or the
/// arrow keys; a screen reader says where it is. Two of the kept captures can be marked, to be
/// compared.
class StorageChartView : public QWidget, public AccessibleParts {
    Q_OBJECT

public:
    explicit StorageChartView(QWidget* parent = nullptr);

    void present(std::shared_ptr<const StorageChart> shown);
    void showMoments(const ComparedMoments& marked);
    /// The point that the cursor stands at.
    std::optional<std::size_t> cursor() const { return current; }
    void setCursor(std::optional<std::size_t> point);

    int partCount() const override;
    QString partText(int part) const override;
    QRect partArea(int part) const override;
    int currentPart() const override { return current ? static_cast<int>(*current) : -1; }
    void choosePart(int part) override;

    QSize sizeHint() const override { return {640, 300}; }
    QSize minimumSizeHint() const override { return {260, 160}; }

Q_SIGNALS:
    void cursorMoved();
    void eventChosen(const tidemark::OptionalShared<tidemark::Event>& event);
    /// The user marks the capture at the cursor.
    void markRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void lay();
    void move(std::ptrdiff_t steps);
    double leftToRight(double x) const;
    /// True when `shownX`, in pixels of the widget, is between the left and the right edge of the
    /// plot or close beside them.
    bool isAtPlot(double shownX) const;
    std::optional<std::size_t> markNear(Date at) const;
    const ChartReading& readingAt(std::optional<std::size_t> point, std::optional<std::size_t> gap);
    void chooseEventAt(Date at);

    std::shared_ptr<const StorageChart> chart;
    ChartLayout layout;
    ComparedMoments moments;
    std::optional<std::size_t> current;
    /// The text at the cursor, and the point or the gap that it is about.
    struct Reading {
        std::optional<std::size_t> point;
        std::optional<std::size_t> gap;
        ChartReading text;
    };
    std::optional<Reading> reading;
    /// The horizontal position of the pointer, measured in the layout; absent where `isAtPlot` is
    /// false.
    std::optional<double> pointer;
};

} // namespace tidemark
