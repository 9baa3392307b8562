#include "views/workspace/InspectionSectionView.h"

#include "core/base/Text.h"
#include "core/presentation/EventInspection.h"
#include "views/base/ElidedLabel.h"
#include "views/base/Fonts.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/WrappingPolicy.h"
#include "views/workspace/ShareBar.h"

#include <QGridLayout>
#include <QRegularExpression>
#include <algorithm>
#include <cstdlib>
#include <limits>

namespace tidemark {

namespace {

constexpr double noteScale = 0.93;

/// A longer value is shown only up to here; the record keeps all of it.
constexpr std::size_t longestValue = 4096;

/// A text that wraps, and can be selected and copied.
template <class Label>
Label* wrapping(Label* made) {
    made->setTextFormat(Qt::PlainText);
    made->setAlignment(Qt::AlignTop | wrappingPolicy::leadingEdge());
    made->setTextInteractionFlags(Qt::TextSelectableByMouse);
    wrappingPolicy::apply(*made);
    return made;
}

QString shownValue(const std::string& text, bool isNamed) {
    if (text.size() > longestValue)
        return shortened(QString::fromStdString(text), longestValue);
    const QString shown = isNamed ? QString::fromStdString(text) : shownText(text);
    const bool hasParts = !isNamed && shown == QString::fromStdString(text);
    return hasParts ? shownParts(text, " · ") : shown;
}

/// Moves the two times of an interval within one day to a line of their own.
QString withTimesBelow(QString text) {
    static const QRegularExpression beforeTimes(
        QStringLiteral(", (?=\\d\\d?:\\d\\d(:\\d\\d)? – \\d\\d?:)"));
    // Not a line feed: a direction isolate would end there.
    return text.replace(beforeTimes, QStringLiteral(",\u2028"));
}

/// Lets a text without blanks wrap at its slashes.
QString breakable(const std::string& text, bool isNamed) {
    QString shown = withTimesBelow(shownValue(text, isNamed));
    return isolated(shown.replace(u'/', QStringLiteral("/\u200B")));
}

QLabel* valueLabel(const std::string& text, bool isNamed = false) {
    return wrapping(new QLabel(breakable(text, isNamed)));
}

DimLabel* nameLabel(const std::string& text, bool isNamed = false) {
    return wrapping(new DimLabel(isolated(shownValue(text, isNamed))));
}

/// A label of a fixed text, none of whose words is cut off in a narrow window.
DimLabel* wordsLabel(const std::string& text) {
    auto* made = nameLabel(text);
    int longest = 0;
    for (const QString& word : made->text().split(u' '))
        longest = std::max(longest, made->fontMetrics().horizontalAdvance(word));
    made->setMinimumWidth(longest);
    return made;
}

DimLabel* sentenceLabel(const std::string& text) {
    auto* made = wrapping(new DimLabel(isolated(shownText(text))));
    labels::scale(*made, noteScale);
    return made;
}

DimLabel* headingLabel(const std::string& text) {
    auto* made = new DimLabel(isolated(shownText(text)));
    made->setFont(fonts::bold(made->font()));
    labels::scale(*made, noteScale);
    return made;
}

/// The columns of a grid, in twelfths of its width.
class Grid {
public:
    Grid() : layout(new QGridLayout) {
        layout->setHorizontalSpacing(10);
        layout->setVerticalSpacing(5);
        layout->setContentsMargins(0, 0, 0, 0);
        for (int column = 0; column < columns; ++column) {
            layout->setColumnStretch(column, 1);
            // A column takes its share of the width, whatever is in it.
            layout->setColumnMinimumWidth(column, 1);
        }
    }

    void add(const InspectionRow& row) {
        const int at = layout->rowCount();
        layout->addWidget(wordsLabel(row.label), at, 0, 1, 5);
        layout->addWidget(valueLabel(row.value, row.isNamed), at, 5, 1, columns - 5);
    }

    void addHeader() {
        const int at = layout->rowCount();
        layout->addWidget(nameLabel(std::string(EventInspection::before)), at, 4, 1, 4);
        layout->addWidget(nameLabel(std::string(EventInspection::after)), at, 8, 1, 4);
    }

    void add(const InspectionChange& change) {
        const int at = layout->rowCount();
        layout->addWidget(nameLabel(change.subject, change.isNamed), at, 0, 1, 4);
        layout->addWidget(valueLabel(change.before), at, 4, 1, 4);
        layout->addWidget(valueLabel(change.after), at, 8, 1, 4);
    }

    /// Adds a change of a size, with a bar in proportion to `largest`, the largest change of the
    /// section.
    void addBar(const InspectionChange& change, std::int64_t largest) {
        const int at = layout->rowCount();
        const QString sizes =
            shownText(change.before) + QStringLiteral(" → ") + shownText(change.after);
        auto* name = new ElidedLabel(Qt::ElideMiddle);
        const QString subject = shownValue(change.subject, change.isNamed);
        name->setText(subject);
        auto* bar = new ShareBar(static_cast<double>(*change.growth)
                                 / static_cast<double>(std::max<std::int64_t>(1, largest)));
        auto* growth = new QLabel(isolated(shownText(signedBytes(*change.growth))));
        growth->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
        for (QWidget* widget : std::initializer_list<QWidget*>{name, bar, growth}) {
            widget->setToolTip(asPlainText(subject + QStringLiteral("\n") + sizes));
            widget->setAccessibleDescription(sizes);
        }
        layout->addWidget(name, at, 0, 1, 5);
        layout->addWidget(bar, at, 5, 1, 4);
        layout->addWidget(growth, at, 9, 1, 3);
    }

    QGridLayout* layout;

private:
    static constexpr int columns = 12;
};

std::int64_t largestOf(const std::vector<InspectionChange>& changes) {
    std::int64_t largest = 0;
    for (const auto& change : changes)
        if (change.growth && *change.growth != std::numeric_limits<std::int64_t>::min())
            largest = std::max(largest, std::abs(*change.growth));
    return largest;
}

} // namespace

InspectionSectionView::InspectionSectionView(const InspectionSection& section, QWidget* parent)
    : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    if (!section.heading.empty())
        column->addWidget(headingLabel(section.heading));
    Grid grid;
    for (const auto& row : section.rows)
        grid.add(row);
    if (std::ranges::any_of(section.changes,
                            [](const auto& change) { return !change.growth.has_value(); }))
        grid.addHeader();
    const std::int64_t largest = largestOf(section.changes);
    for (const auto& change : section.changes)
        change.growth ? grid.addBar(change, largest) : grid.add(change);
    if (!section.rows.empty() || !section.changes.empty())
        column->addLayout(grid.layout);
    else
        delete grid.layout;
    for (const auto& sentence : section.sentences)
        column->addWidget(sentenceLabel(sentence));
}

} // namespace tidemark
