#pragma once

#include "core/growth/HistoryDigest.h"
#include "views/base/RoundedPanel.h"

class QGridLayout;

namespace tidemark {

class DimLabel;

/// The card above the timeline for a user who comes back: what happened meanwhile, in a few lines.
class DigestCardView : public RoundedPanel {
    Q_OBJECT

public:
    explicit DigestCardView(QWidget* parent = nullptr);

    void present(const HistoryDigest& digest);

Q_SIGNALS:
    void closed();
    void eventChosen(const tidemark::Shared<tidemark::Event>& event);
    /// The user wants to see what grew.
    void growthRequested();

private:
    void showLines(const HistoryDigest& digest);
    void addLine(const QString& heading, QWidget* content, Qt::Alignment alignment = Qt::AlignTop);
    QWidget* backgroundButtons(const HistoryDigest& digest);

    DimLabel* period;
    QWidget* lines = nullptr;
    QGridLayout* grid = nullptr;
    std::optional<HistoryDigest> shown;
};

} // namespace tidemark
