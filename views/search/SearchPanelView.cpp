#include "views/search/SearchPanelView.h"

#include "views/base/CrossButton.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/ThinScrollBar.h"
#include "views/base/TintedSymbol.h"
#include "views/search/SearchResultDelegate.h"
#include "views/search/SearchResultModel.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

namespace tidemark {

namespace {

constexpr QSize panelSize(640, 440);
constexpr double fieldScale = 1.3;
/// How much of the text colour the edge of the panel has.
constexpr float edgeStrength = 0.25F;

SearchPanelKey keyOf(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Up:
        return SearchPanelKey::up;
    case Qt::Key_Down:
        return SearchPanelKey::down;
    case Qt::Key_PageUp:
        return SearchPanelKey::pageUp;
    case Qt::Key_PageDown:
        return SearchPanelKey::pageDown;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return SearchPanelKey::enter;
    case Qt::Key_Escape:
        return SearchPanelKey::escape;
    default:
        return SearchPanelKey::other;
    }
}

} // namespace

SearchPanelView::SearchPanelView(HistorySearch::History all, const ViewSettings& used)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      history(std::move(all)), settings(used), results(new SearchResultModel(this)),
      icon(new QLabel), field(new QLineEdit), caption(new DimLabel), list(new QListView),
      stack(new QStackedWidget), emptyTitle(labels::heading({})),
      emptyExplanation(labels::note({})) {
    setWindowTitle(wordsHere(HistorySearch::title));
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    resize(panelSize);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(makeField());
    column->addWidget(makeResults(), 1);
    column->addWidget(makeHints());
}

QWidget* SearchPanelView::makeField() {
    field->setFrame(false);
    field->setPlaceholderText(wordsHere(HistorySearch::prompt));
    field->setAccessibleName(wordsHere(HistorySearch::prompt));
    labels::scale(*field, fieldScale);
    field->installEventFilter(this);
    connect(field, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (search)
            search->setQuery(text.toStdString());
    });
    auto* dismissal = new CrossButton(wordsHere(HistorySearch::dismissLabel));
    connect(dismissal, &QToolButton::clicked, this, &SearchPanelView::dismiss);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(16, 14, 12, 10);
    row->setSpacing(10);
    row->addWidget(icon);
    row->addWidget(field, 1);
    row->addWidget(dismissal);
    return line;
}

QWidget* SearchPanelView::makeResults() {
    list->setModel(results);
    list->setItemDelegate(new SearchResultDelegate(list));
    list->setFrameShape(QFrame::NoFrame);
    list->setUniformItemSizes(true);
    list->setMouseTracking(true);
    list->setVerticalScrollMode(QListView::ScrollPerPixel);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setAccessibleName(tr("Results"));
    list->installEventFilter(this);
    useThinScrollBars(*list);
    // A row is opened when the button is released over it; pressing the button only selects it.
    connect(list, &QListView::clicked, this, [this](const QModelIndex& index) {
        if (!search)
            return;
        search->selection = results->idAt(index);
        search->openSelected();
    });
    auto* empty = new QWidget;
    auto* column = new QVBoxLayout(empty);
    column->setContentsMargins(48, 0, 48, 24);
    emptyTitle->setAlignment(Qt::AlignCenter);
    emptyExplanation->setAlignment(Qt::AlignCenter);
    column->addStretch();
    column->addWidget(emptyTitle);
    column->addWidget(emptyExplanation);
    column->addStretch();
    stack->addWidget(list);
    stack->addWidget(empty);
    auto* both = new QWidget;
    auto* page = new QVBoxLayout(both);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(4);
    caption->setContentsMargins(18, 0, 18, 0);
    page->addWidget(caption);
    page->addWidget(stack, 1);
    return both;
}

QWidget* SearchPanelView::makeHints() {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(18, 8, 18, 10);
    row->addWidget(new DimLabel(isolated(wordsHere(HistorySearch::keysHint))));
    row->addStretch();
    row->addWidget(new DimLabel(wordsHere(HistorySearch::escapeHint)));
    return line;
}

void SearchPanelView::open() {
    endSearch();
    search = std::make_unique<HistorySearch>(history, [this](const Shared<Event>& event) {
        dismiss();
        Q_EMIT eventChosen(event);
    });
    connect(search.get(), &HistorySearch::changed, this, &SearchPanelView::refresh);
    field->clear();
    // The palette may be another one than the last time.
    icon->setPixmap(tintedSymbol("search", field->fontMetrics().height(),
                                 palette().color(QPalette::Text), devicePixelRatioF()));
    labels::scale(*list, settings.listingTextScale());
    placeOnScreen();
    refresh();
    show();
    raise();
    activateWindow();
    field->setFocus(Qt::ActiveWindowFocusReason);
}

void SearchPanelView::placeOnScreen() {
    const auto* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    QRect place(QPoint(), panelSize.boundedTo(area.size()));
    place.moveCenter(area.center());
    setGeometry(place);
}

void SearchPanelView::dismiss() {
    close();
}

void SearchPanelView::endSearch() {
    // `search` is emptied first: the destructor of a running search handles events, and none of
    // them, such as the queued call of this function after the panel was hidden, may find the
    // search there any more.
    const auto ended = std::exchange(search, nullptr);
}

void SearchPanelView::refresh() {
    if (!search)
        return;
    // The last results stay until the next are there.
    if (*search->searching)
        return;
    caption->setText(wordsHere(search->caption()));
    results->show(*search->results);
    const QModelIndex selected = results->indexOf(*search->selection);
    list->setCurrentIndex(selected);
    list->scrollTo(selected);
    emptyTitle->setText(wordsHere(search->emptyTitle()));
    emptyExplanation->setText(wordsHere(search->emptyExplanation()));
    stack->setCurrentIndex(search->results->empty() ? 1 : 0);
}

bool SearchPanelView::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress;
    if (!search || (!isKey && event->type() != QEvent::ShortcutOverride))
        return QWidget::eventFilter(watched, event);
    auto& key = static_cast<QKeyEvent&>(*event);
    if (isKey)
        return handle(*watched, key) || QWidget::eventFilter(watched, event);
    // Otherwise a shortcut of the program could take the key.
    if (actionOf(keyOf(key), page()).kind != SearchPanelAction::Kind::type)
        key.accept();
    return QWidget::eventFilter(watched, event);
}

bool SearchPanelView::handle(QObject& watched, QKeyEvent& key) {
    using Kind = SearchPanelAction::Kind;
    const auto action = actionOf(keyOf(key), page());
    switch (action.kind) {
    case Kind::moveSelection:
        search->moveSelection(action.delta);
        return true;
    case Kind::openSelected:
        search->openSelected();
        return true;
    case Kind::dismiss:
        dismiss();
        return true;
    case Kind::type:
        break;
    }
    if (&watched == field || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab)
        return false;
    field->setFocus();
    QCoreApplication::sendEvent(field, &key);
    return true;
}

std::ptrdiff_t SearchPanelView::page() const {
    const int height = list->sizeHintForRow(0);
    return height > 0 ? list->viewport()->height() / height : 1;
}

void SearchPanelView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange)
        return;
    if (isActiveWindow())
        wasActive = true;
    else if (wasActive)
        dismiss();
}

void SearchPanelView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    wasActive = false;
    // The search is ended later, since it may itself have called this function when an event was
    // chosen.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!isVisible())
                endSearch();
        },
        Qt::QueuedConnection);
}

void SearchPanelView::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    QPainter painter(this);
    QColor edge = palette().color(QPalette::Text);
    edge.setAlphaF(edgeStrength);
    painter.setPen(edge);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace tidemark
