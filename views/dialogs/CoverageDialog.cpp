#include "views/dialogs/CoverageDialog.h"

#include "core/base/Text.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/ThinScrollBar.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

void addRow(QListWidget& rows, const char* symbol, const QString& text, const QString& when) {
    const QString below = when.isEmpty() ? QString() : QString(u'\n' + isolated(when));
    auto* row = new QListWidgetItem(symbolIcon(symbol), isolated(text) + below, &rows);
    row->setData(Qt::AccessibleTextRole, QString(text + QStringLiteral(", ") + when));
}

} // namespace

CoverageDialog::CoverageDialog(const CoverageList& list, QWidget* parent) : QDialog(parent) {
    setWindowTitle(shownText(CoverageList::title));
    resize(560, 420);
    auto* explanation = labels::note(shownText(CoverageList::explanation));
    auto* rows = new QListWidget;
    rows->setAccessibleName(shownText(CoverageList::explanation));
    rows->setWordWrap(true);
    rows->setIconSize({22, 22});
    rows->setSpacing(4);
    rows->setFrameShape(QFrame::StyledPanel);
    useThinScrollBars(*rows);
    for (const auto& gap : list.gaps)
        addRow(*rows, "clock", tr("No capture"), shownPart(gap.when));
    for (const auto& problem : list.problems)
        addRow(*rows, "exclamationmark.circle", shownText(oneLine(problem.message)),
               shownParts(problem.when, ", "));
    if (list.isEmpty())
        addRow(*rows, "clock.badge.checkmark",
               tr("Every place was seen at every capture that was due."), {});
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(10);
    column->addWidget(labels::title(shownText(CoverageList::title), 1.4));
    for (QWidget* widget : std::initializer_list<QWidget*>{explanation, rows, buttons})
        column->addWidget(widget);
    // Otherwise the list would have the keyboard focus and draw its first row as selected.
    buttons->button(QDialogButtonBox::Close)->setFocus();
}

} // namespace tidemark
