#pragma once

#include <QWidget>
#include <optional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace tidemark {

class ElidedLabel;

/// The line below the list: a fixed sentence about the history; while a capture runs, its stage
/// instead, with a button that cancels it.
class FooterView : public QWidget {
    Q_OBJECT

public:
    explicit FooterView(QWidget* parent = nullptr);

    /// `stage` is absent while no capture runs.
    void present(const std::optional<QString>& stage);

Q_SIGNALS:
    void cancelled();

private:
    ElidedLabel* text;
    QProgressBar* bar;
    QPushButton* cancel;
};

} // namespace tidemark
