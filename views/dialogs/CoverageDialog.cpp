#include "views/dialogs/CoverageDialog.h"

#include "core/base/Text.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/TextColor.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace tidemark {

namespace {

void addRow(QListWidget& rows, const char* symbol, const QString& text, const QString& when) {
    auto* row = new QListWidgetItem(symbolIcon(symbol), text + u'\n' + when, &rows);
    row->setData(Qt::AccessibleTextRole, text + QStringLiteral(", ") + when);
}

} // namespace

CoverageDialog::CoverageDialog(const CoverageList& list, QWidget* parent) : QDialog(parent) {
    setWindowTitle(shownText(CoverageList::title));
    resize(560, 420);
    auto* explanation = new QLabel(shownText(CoverageList::explanation));
    textColor::dim(*explanation);
    auto* rows = new QListWidget;
    rows->setAccessibleName(shownText(CoverageList::explanation));
    rows->setWordWrap(true);
    for (const auto& gap : list.gaps)
        addRow(*rows, "clock", tr("No capture"), QString::fromStdString(gap.when));
    for (const auto& problem : list.problems)
        addRow(*rows, "exclamationmark.circle", shownText(oneLine(problem.message)),
               QString::fromStdString(problem.when));
    if (list.isEmpty())
        addRow(*rows, "clock.badge.checkmark",
               tr("Every place was seen at every capture that was due."), {});
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{explanation, rows, buttons})
        column->addWidget(widget);
}

} // namespace tidemark
