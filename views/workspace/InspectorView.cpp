#include "views/workspace/InspectorView.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

/// A text that wraps, and can be selected and copied.
QLabel* label(const QString& text) {
    auto* made = new QLabel(isolated(text));
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    made->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    made->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Paths have no blanks to wrap at: the column must not become as wide as the longest.
    made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    return made;
}

QLabel* dimLabel(const QString& text) {
    auto* made = label(text);
    textColor::dim(*made);
    return made;
}

QLabel* heading(const QString& text) {
    auto* made = label(text);
    QFont font = made->font();
    font.setBold(true);
    made->setFont(font);
    return made;
}

/// Lets a text without blanks wrap at its slashes.
QString breakable(const std::string& text) {
    QString shown = shownText(text);
    return shown.replace(u'/', QStringLiteral("/\u200B"));
}

QGridLayout* grid() {
    auto* made = new QGridLayout;
    made->setHorizontalSpacing(12);
    made->setVerticalSpacing(4);
    made->setColumnStretch(0, 2);
    made->setColumnStretch(1, 3);
    return made;
}

} // namespace

InspectorView::InspectorView(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(shownText(EventInspection::heading));
    present(std::nullopt);
}

void InspectorView::present(const std::optional<EventInspection>& inspection) {
    auto* content = new QWidget;
    content->setBackgroundRole(QPalette::Base);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(12);
    if (!inspection) {
        addPlaceholder(*column);
    } else {
        addHead(*column, *inspection);
        for (const auto& section : inspection->sections)
            addSection(*column, section);
        addActions(*column, *inspection);
    }
    column->addStretch();
    setWidget(content);
}

void InspectorView::addPlaceholder(QVBoxLayout& column) {
    auto* text = dimLabel(shownText(EventInspection::placeholder));
    text->setAlignment(Qt::AlignHCenter);
    column.addStretch();
    column.addWidget(text);
}

void InspectorView::addHead(QVBoxLayout& column, const EventInspection& inspection) {
    auto* title = heading(QString::fromStdString(inspection.title));
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    title->setFont(font);
    column.addWidget(title);
    if (!inspection.subtitle.empty())
        column.addWidget(dimLabel(QString::fromStdString(inspection.subtitle)));
}

void InspectorView::addSection(QVBoxLayout& column, const InspectionSection& section) {
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Midlight);
    column.addWidget(line);
    if (!section.heading.empty())
        column.addWidget(heading(shownText(section.heading)));
    auto* rows = grid();
    for (const auto& [name, value] : section.rows) {
        const int row = rows->rowCount();
        rows->addWidget(dimLabel(shownText(name)), row, 0);
        rows->addWidget(label(breakable(value)), row, 1);
    }
    if (!section.changes.empty()) {
        const int row = rows->rowCount();
        rows->setColumnStretch(2, 2);
        rows->addWidget(dimLabel(shownText(EventInspection::before)), row, 1);
        rows->addWidget(dimLabel(shownText(EventInspection::after)), row, 2);
    }
    for (const auto& [subject, before, after] : section.changes) {
        const int row = rows->rowCount();
        rows->addWidget(label(breakable(subject)), row, 0);
        rows->addWidget(label(breakable(before)), row, 1);
        rows->addWidget(label(breakable(after)), row, 2);
    }
    column.addLayout(rows);
    for (const auto& sentence : section.sentences)
        column.addWidget(dimLabel(shownText(sentence)));
}

void InspectorView::addActions(QVBoxLayout& column, const EventInspection& inspection) {
    for (const auto& [command, words] : inspection.actions) {
        auto* button = new QPushButton(shownText(words));
        connect(button, &QPushButton::clicked, this,
                [this, command = command] { Q_EMIT actionTriggered(command); });
        column.addWidget(button, 0, Qt::AlignLeading);
    }
}

} // namespace tidemark
