#include "views/storage/StorageOverTimeView.h"

#include "core/growth/StorageChartText.h"
#include "views/base/Choices.h"
#include "views/base/ElidedLabel.h"
#include "views/base/Fonts.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/WrappingLabel.h"
#include "views/folders/FolderTree.h"
#include "views/storage/GrowthPane.h"
#include "views/storage/StorageChartView.h"
#include "views/storage/StorageTableModel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>

namespace tidemark {

namespace {

constexpr int firstChartHeight = 380;
constexpr int firstListHeight = 260;

/// The widest text of the column of times, that of a gap.
constexpr auto widestTime = "30 Sep 2026, 00:00 – 30 Sep 2026, 00:00";

QString momentText(Date at) {
    return QString::fromStdString(Calendar().format(at, "d MMM yyyy, HH:mm"));
}

} // namespace

StorageOverTimeView::StorageOverTimeView(GrowthScreen& used, QWidget* parent)
    : QWidget(parent), growth(used), subjects(new QComboBox), spans(new QComboBox),
      marked(new ElidedLabel), mark(new QPushButton), compare(new QPushButton),
      asTable(new QToolButton), problem(new WrappingLabel), chart(new StorageChartView),
      rows(new StorageTableModel(this)), table(new FolderTree), forms(new QStackedWidget),
      grown(new GrowthPane) {
    auto* sides = new QSplitter(Qt::Vertical);
    sides->setHandleWidth(1);
    sides->setChildrenCollapsible(false);
    sides->addWidget(makeChart());
    sides->addWidget(grown);
    sides->setStretchFactor(0, 1);
    sides->setSizes({firstChartHeight, firstListHeight});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeControls());
    column->addWidget(sides, 1);
    connectParts();
    showMoments();
    setFocusProxy(chart);
}

QWidget* StorageOverTimeView::makeControls() {
    subjects->setAccessibleName(tr("Size that is shown"));
    spans->setAccessibleName(tr("Time that is shown"));
    for (QComboBox* box : {subjects, spans})
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    std::vector<Choice> choices;
    for (const auto span : growthSpans)
        choices.push_back({isolated(shownText(label(span))), static_cast<int>(span)});
    showChoices(*spans, choices, static_cast<int>(growth.span()));
    mark->setIcon(symbolIcon("flag"));
    mark->setText(tr("Mark"));
    mark->setToolTip(tr("Mark the capture at the cursor, to compare it with another one (Space)"));
    compare->setText(tr("Compare"));
    compare->setToolTip(tr("Show what changed between the two marked captures"));
    asTable->setIcon(symbolIcon("table"));
    asTable->setCheckable(true);
    asTable->setAutoRaise(true);
    asTable->setFocusPolicy(Qt::StrongFocus);
    asTable->setShortcut(Qt::CTRL | Qt::Key_T);
    asTable->setAccessibleName(tr("Show as a table"));
    asTable->setToolTip(tr("Show as a table (Ctrl+T)"));
    auto* controls = new QWidget;
    auto* row = new QHBoxLayout(controls);
    row->setContentsMargins(20, 10, 14, 6);
    row->setSpacing(8);
    row->addWidget(subjects);
    row->addWidget(spans);
    marked->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    row->addWidget(marked, 1);
    row->addWidget(mark);
    row->addWidget(compare);
    row->addWidget(asTable);
    return controls;
}

QWidget* StorageOverTimeView::makeChart() {
    table->setModel(rows);
    table->setSortingEnabled(false);
    table->setAccessibleName(wordsHere(storageChartText::title));
    forms->addWidget(chart);
    forms->addWidget(table);
    auto* all = new QWidget;
    auto* column = new QVBoxLayout(all);
    column->setContentsMargins(0, 0, 0, 6);
    column->setSpacing(0);
    problem->setContentsMargins(20, 4, 20, 4);
    column->addWidget(problem);
    column->addWidget(forms, 1);
    return all;
}

void StorageOverTimeView::connectParts() {
    connect(subjects, &QComboBox::activated, this, [this](int index) {
        growth.choose(subjects->itemData(index).toString().toStdString());
    });
    connect(spans, &QComboBox::activated, this, [this](int index) {
        growth.setSpan(static_cast<GrowthSpan>(spans->itemData(index).toInt()));
    });
    connect(grown, &GrowthPane::folderChosen, this,
            [this](const QString& path) { growth.choose(path.toStdString()); });
    connect(chart, &StorageChartView::eventChosen, this, &StorageOverTimeView::eventChosen);
    connect(chart, &StorageChartView::cursorMoved, this, &StorageOverTimeView::showMoments);
    connect(chart, &StorageChartView::markRequested, this, &StorageOverTimeView::markAtCursor);
    connect(mark, &QPushButton::clicked, this, &StorageOverTimeView::markAtCursor);
    connect(compare, &QPushButton::clicked, this, [this] {
        Q_EMIT comparisonRequested(moments.earlier().snapshot, moments.later().snapshot);
    });
    connect(asTable, &QToolButton::toggled, this, &StorageOverTimeView::showTable);
    connect(table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &StorageOverTimeView::takeCursorOfTable);
    auto* space = new QShortcut(Qt::Key_Space, table);
    space->setContext(Qt::WidgetShortcut);
    connect(space, &QShortcut::activated, this, &StorageOverTimeView::markAtCursor);
}

void StorageOverTimeView::refresh() {
    const auto content = growth.content();
    problem->setVisible(growth.problem().has_value());
    problem->setWhole(growth.problem() ? wordsHere(*growth.problem()) : QString());
    if (!content || content == shown)
        return;
    shown = content;
    showChoicesOf(*content);
    // The chart and the table keep the whole content, of which `drawn` is a part.
    const std::shared_ptr<const StorageChart> drawn(content, &content->chart);
    chart->present(drawn);
    rows->show(drawn);
    fitTable();
    grown->present(content->growth);
    showMoments();
}

void StorageOverTimeView::showChoicesOf(const GrowthScreen::Content& content) {
    std::vector<Choice> choices;
    int selected = 0;
    for (const auto& subject : content.subjects) {
        if (subject.path == growth.subject())
            selected = static_cast<int>(choices.size());
        choices.push_back({isolated(shownFolderName(subject.path, oneLine(subject.name))),
                           QString::fromStdString(subject.path)});
    }
    showChoices(*subjects, choices, selected);
    spans->setCurrentIndex(spans->findData(static_cast<int>(growth.span())));
}

QString StorageOverTimeView::summary() const {
    if (!shown)
        return tr("Reading the history…");
    const auto count = shown->chart.points.size();
    const QString sizes = count == 1 ? tr("1 size") : tr("%1 sizes").arg(count);
    return shownFolderName(shown->chart.subject.path, oneLine(shown->chart.subject.name))
           + QStringLiteral(" · ") + shownText(label(growth.span())) + QStringLiteral(" · ")
           + sizes;
}

std::optional<StorageChart::Point> StorageOverTimeView::pointAtCursor() const {
    const auto cursor = chart->cursor();
    return shown && cursor ? std::optional(shown->chart.points[*cursor]) : std::nullopt;
}

void StorageOverTimeView::markAtCursor() {
    const auto point = pointAtCursor();
    if (!point || !point->snapshot)
        return;
    moments.toggle({*point->snapshot, point->at});
    showMoments();
}

void StorageOverTimeView::showMoments() {
    const auto point = pointAtCursor();
    mark->setEnabled(point && point->snapshot);
    compare->setEnabled(moments.isComplete());
    chart->showMoments(moments);
    const auto& all = moments.all();
    if (moments.isComplete())
        marked->setText(momentText(moments.earlier().at) + QStringLiteral(" → ")
                        + momentText(moments.later().at));
    else if (!all.empty())
        marked->setText(tr("%1 → mark another one").arg(momentText(all.front().at)));
    else if (point && !point->snapshot)
        marked->setText(tr("Of this day only the sizes are kept"));
    else
        marked->clear();
    marked->setToolTip(marked->text());
}

void StorageOverTimeView::showTable(bool isShown) {
    forms->setCurrentWidget(isShown ? static_cast<QWidget*>(table) : chart);
    setFocusProxy(forms->currentWidget());
    if (isShown)
        table->setCurrentIndex(rows->indexOf(chart->cursor()));
    forms->currentWidget()->setFocus();
}

void StorageOverTimeView::takeCursorOfTable() {
    const auto point = rows->pointAt(table->currentIndex());
    if (!point)
        return;
    chart->setCursor(point);
    showMoments();
}

void StorageOverTimeView::setTextScale(double scale) {
    grown->setTextScale(scale);
    const QFont sized = fonts::ofApplication(scale);
    if (sized.pointSizeF() == table->font().pointSizeF())
        return;
    table->setFont(sized);
    chart->setFont(sized);
    fitTable();
}

void StorageOverTimeView::fitTable() {
    table->fitColumns();
    auto& header = *table->header();
    header.setSectionResizeMode(StorageTableModel::when, QHeaderView::Interactive);
    header.resizeSection(StorageTableModel::when,
                         table->fontMetrics().horizontalAdvance(QString::fromUtf8(widestTime))
                             + 3 * table->indentation());
    header.setSectionResizeMode(StorageTableModel::note, QHeaderView::Stretch);
}

} // namespace tidemark
