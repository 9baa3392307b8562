#include "views/workspace/WorkspaceActions.h"

#include "core/presentation/WorkspaceText.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"

#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

namespace tidemark {

namespace {

using Command = WorkspaceActions::Command;

constexpr int searchWidth = 300;
constexpr int narrowestSearch = 110;

Command commandOf(ToolbarCommand command) {
    switch (command) {
    case ToolbarCommand::checkNow:
        return Command::checkNow;
    case ToolbarCommand::changeRecording:
        return Command::changeRecording;
    case ToolbarCommand::exportHistory:
        return Command::exportHistory;
    case ToolbarCommand::darkMode:
        return Command::darkMode;
    case ToolbarCommand::settings:
        break;
    }
    return Command::settings;
}

/// The letter that selects the entry in an open menu; null if its text marks none.
QChar mnemonicOf(const QAction& action) {
    const auto mark = action.text().indexOf(u'&');
    return mark < 0 ? QChar() : action.text().at(mark + 1).toUpper();
}

/// Marks a letter of `text` as the mnemonic of `action`: the first that is not yet the mnemonic of
/// another entry in a menu that contains `action`.
QString withMnemonic(QString text, const QAction& action) {
    QString taken;
    for (const auto* object : action.associatedObjects())
        if (const auto* menu = qobject_cast<const QMenu*>(object))
            for (const auto* other : menu->actions())
                if (other != &action)
                    taken += mnemonicOf(*other);
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text.at(i).isLetter() && !taken.contains(text.at(i).toUpper()))
            return text.insert(i, u'&');
    return text;
}

QWidget* stretch() {
    auto* space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return space;
}

} // namespace

WorkspaceActions::WorkspaceActions(QMainWindow& window)
    : QObject(&window), searchField(new QLineEdit) {
    makeActions(window);
    makeToolbar(window);
    makeMenus(window);
    refresh({});
}

void WorkspaceActions::makeActions(QMainWindow& window) {
    const struct {
        Command command;
        QString text;
        QKeySequence key;
    } rows[] = {
        // Where the text is empty, it is that of `toolbarActions`.
        {Command::checkNow, {}, Qt::CTRL | Qt::Key_R},
        {Command::changeRecording, {}, {}},
        {Command::exportHistory, {}, Qt::CTRL | Qt::Key_E},
        {Command::darkMode, {}, {}},
        {Command::settings, {}, Qt::CTRL | Qt::Key_Comma},
        {Command::saveSnapshot, tr("&Save Snapshot…"), QKeySequence::Save},
        {Command::coverage, tr("Observation &Coverage…"), {}},
        {Command::monitoredFolders, tr("&Monitored Folders…"), {}},
        {Command::importHistory, tr("&Import Recent History…"), {}},
        {Command::searchHistory, tr("Search &History…"), Qt::CTRL | Qt::SHIFT | Qt::Key_F},
        {Command::quit, tr("&Quit"), Qt::CTRL | Qt::Key_Q},
        {Command::find, tr("&Find"), QKeySequence::Find},
        {Command::largerText, tr("&Larger Text"), QKeySequence::ZoomIn},
        {Command::smallerText, tr("&Smaller Text"), QKeySequence::ZoomOut},
        {Command::normalText, tr("&Normal Text Size"), Qt::CTRL | Qt::Key_0},
        {Command::nextPane, tr("Next &Pane"), Qt::Key_F6},
        {Command::previousPane, tr("P&revious Pane"), Qt::SHIFT | Qt::Key_F6},
        {Command::about, tr("&About Tidemark"), {}},
    };
    for (const auto& row : rows) {
        auto* made = new QAction(row.text, &window);
        made->setShortcut(row.key);
        connect(made, &QAction::triggered, this,
                [this, command = row.command] { Q_EMIT triggered(command); });
        actions.emplace(row.command, made);
        window.addAction(made);
    }
    action(Command::darkMode)->setCheckable(true);
}

void WorkspaceActions::makeToolbar(QMainWindow& window) {
    auto* bar = window.addToolBar(tr("Toolbar"));
    bar->setMovable(false);
    // The size of the symbols for toolbars in icon themes; larger ones are often pictures.
    bar->setIconSize({22, 22});
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const auto command : {Command::checkNow, Command::changeRecording, Command::exportHistory})
        bar->addAction(action(command));
    bar->addWidget(stretch());
    searchField->setPlaceholderText(wordsHere(workspaceText::searchPrompt));
    searchField->setAccessibleName(wordsHere(workspaceText::searchPrompt));
    searchField->setClearButtonEnabled(true);
    searchField->addAction(symbolIcon("search"), QLineEdit::LeadingPosition);
    searchField->setMinimumWidth(narrowestSearch);
    searchField->setMaximumWidth(searchWidth);
    for (auto* button : searchField->findChildren<QToolButton*>())
        for (const auto set : {&QWidget::setToolTip, &QWidget::setAccessibleName})
            (button->*set)(wordsHere(workspaceText::clearSearch));
    auto* leave = new QShortcut(Qt::Key_Escape, searchField);
    leave->setContext(Qt::WidgetShortcut);
    connect(leave, &QShortcut::activated, searchField, &QLineEdit::clear);
    bar->addWidget(searchField);
    for (const auto command : {Command::darkMode, Command::settings}) {
        bar->addAction(action(command));
        auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action(command)));
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
    for (auto* button : bar->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly))
        button->setFocusPolicy(Qt::TabFocus);
}

void WorkspaceActions::makeMenus(QMainWindow& window) {
    const auto fill = [&](const QString& title, std::initializer_list<std::optional<Command>> all) {
        QMenu* menu = window.menuBar()->addMenu(title);
        for (const auto& command : all)
            if (command)
                menu->addAction(action(*command));
            else
                menu->addSeparator();
    };
    const std::nullopt_t line = std::nullopt;
    using enum Command;
    fill(tr("&File"), {checkNow, changeRecording, line, saveSnapshot, exportHistory, importHistory,
                       line, monitoredFolders, settings, line, quit});
    fill(tr("&View"), {find, searchHistory, coverage, line, largerText, smallerText, normalText,
                       line, darkMode, line, nextPane, previousPane});
    fill(tr("&Help"), {about});
}

void WorkspaceActions::refresh(const ToolbarState& state) {
    for (const auto& each : toolbarActions(state)) {
        QAction& shown = *action(commandOf(each.command));
        shown.setText(withMnemonic(shownText(each.label), shown));
        shown.setToolTip(shownText(each.help));
        shown.setIcon(symbolIcon(each.symbol));
        shown.setEnabled(each.isEnabled);
        if (each.isOn)
            shown.setChecked(*each.isOn);
    }
}

void WorkspaceActions::setEnabled(Command command, bool isEnabled) {
    action(command)->setEnabled(isEnabled);
}

} // namespace tidemark
