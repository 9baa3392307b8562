#pragma once

#include "views/base/Choices.h"

#include <QWidget>
#include <optional>

class QSpinBox;
class QToolButton;

namespace tidemark {

class ElidedLabel;

/// The head of the middle column: where the user is, how much is shown, the time window, and the
/// way to the coverage report.
class HistoryHead : public QWidget {
    Q_OBJECT

public:
    struct Content {
        QString title;
        QString summary;
        /// None where the time window does not apply.
        std::vector<Choice> windows;
        int window = 0;
        /// The days of the custom window; absent while another one is chosen.
        std::optional<int> customDays;
        /// The report has gaps or problems.
        bool hasCoverageProblems = false;
    };

    explicit HistoryHead(QWidget* parent = nullptr);

    void present(const Content& content);

Q_SIGNALS:
    void windowChosen(const QString& range);
    void customDaysChosen(int days);
    void coverageRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Shows the button of the coverage report as far as there is room and reason for it.
    void showCoverage();

    bool hasCoverageProblems = false;
    ElidedLabel* title;
    ElidedLabel* summary;
    QComboBox* windows;
    QSpinBox* days;
    QToolButton* coverage;
};

} // namespace tidemark
