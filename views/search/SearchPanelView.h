#pragma once

#include "app/search/HistorySearch.h"
#include "app/settings/ViewSettings.h"
#include "core/presentation/SearchPanel.h"

#include <QWidget>
#include <memory>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QListView;
class QStackedWidget;

namespace tidemark {

class DimLabel;
class SearchResultModel;

/// The search panel: a small window without a frame that opens in the middle of the screen and
/// closes when the user leaves it. Keys do the same in the text field and in the list: some move
/// the selection, open it or close the panel, and all others but Tab go to the field.
class SearchPanelView : public QWidget {
    Q_OBJECT

public:
    SearchPanelView(HistorySearch::History history, const ViewSettings& settings);
    ~SearchPanelView() override { endSearch(); }

    /// Shows the panel with an empty query, even if it is already open with another one.
    void open();

Q_SIGNALS:
    /// The user chose an event; the panel is closed.
    void eventChosen(const tidemark::Shared<tidemark::Event>& event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeField();
    QWidget* makeResults();
    QWidget* makeHints();
    void placeOnScreen();
    void dismiss();
    void endSearch();
    void refresh();
    bool handle(QObject& watched, QKeyEvent& key);
    std::ptrdiff_t page() const;

    const HistorySearch::History history;
    const ViewSettings& settings;
    /// Made anew each time the panel is opened, and destroyed soon after it is closed.
    std::unique_ptr<HistorySearch> search;
    SearchResultModel* results;
    QLabel* icon;
    QLineEdit* field;
    DimLabel* caption;
    QListView* list;
    QStackedWidget* stack;
    QLabel* emptyTitle;
    DimLabel* emptyExplanation;
    /// True once the panel has been the active window: before that, the user can't have left it.
    bool wasActive = false;
};

} // namespace tidemark
