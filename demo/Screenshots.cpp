#include "demo/Screenshots.h"

#include "app/preferences/PreferenceKeys.h"
#include "demo/DemoWindows.h"
#include "views/base/Palettes.h"
#include "views/dialogs/CoverageDialog.h"
#include "views/dialogs/ExportDialog.h"
#include "views/dialogs/ImportDialog.h"
#include "views/dialogs/SaveSnapshotDialog.h"
#include "views/folders/FolderInspectorView.h"
#include "views/folders/FolderMapView.h"
#include "views/folders/FolderTree.h"
#include "views/storage/StorageChartView.h"
#include "views/storage/StorageOverTimeView.h"
#include "views/workspace/TimelineView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWidget>
#include <cmath>
#include <functional>

namespace tidemark::demo {

namespace {

constexpr QSize windowSize(1280, 800);
constexpr QSize settingsSize(720, 800);
/// On 21 November 2026.
Date pictured() {
    return MadeUpHistory::endOfDay(Date::fromUnix(1'795'262'400));
}

/// The recorder and the window of one picture.
struct Studio {
    QTemporaryDir folder;
    std::unique_ptr<DemoRecorder> recorder;
    std::unique_ptr<WorkspaceWindow> window;

    AppModel& model() const { return recorder->model(); }
    HistoryScreen& history() const { return recorder->model().history(); }
};

/// Handles events for that time, and after it until no comparison is running.
void settle(const Studio& studio, int milliseconds = 120) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds || studio.history().isComparing())
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

void write(QWidget& widget, const QString& folder, const QString& name) {
    const QString suffix = widget.devicePixelRatioF() > 1 ? QStringLiteral("-2x") : QString();
    const QString path = QDir(folder).filePath(name + suffix + QStringLiteral(".png"));
    if (!widget.grab().save(path))
        throw Error(path.toStdString() + " could not be written.");
}

/// Selects the first event of the list whose title begins with `title`.
void select(const Studio& studio, std::string_view title) {
    for (const auto& event : studio.history().presentation().events)
        if (event->title.starts_with(title)) {
            studio.history().setSelected(event);
            return;
        }
    throw Error("No event is called " + std::string(title) + ".");
}

/// The first widget of this type inside `parent`. Throws `Error` if there is none.
template <class Widget>
Widget& widgetIn(const QWidget& parent) {
    auto* found = parent.findChild<Widget*>();
    if (!found)
        throw Error("The window has no " + std::string(Widget::staticMetaObject.className()) + ".");
    return *found;
}

FolderTree& tree(const Studio& studio) {
    return widgetIn<FolderTree>(widgetIn<FolderInspectorView>(*studio.window));
}

struct Scene {
    const char* name;
    std::function<void(const Studio&)> arrange;
    bool isDark = false;
    bool isMirrored = false;
    QSize size = windowSize;
    /// Before the history is read.
    std::function<void(Studio&)> prepare = [](Studio&) {};
    bool isFirstStart = false;
    /// The user saw the history last so many days ago.
    double daysAway = 0;
};

bool isWanted(const char* name, const QStringList& only) {
    return only.isEmpty() || only.contains(QLatin1String(name));
}

void atTheTimeline(const Studio& studio) {
    select(studio, "Projects");
}

void atFolderSizes(const Studio& studio) {
    studio.history().navigate(WorkspaceDestination::folderSizes, true);
    settle(studio);
    auto& table = tree(studio);
    table.expand(table.model()->index(0, 0));
    table.setCurrentIndex(table.model()->index(0, 0, table.model()->index(0, 0)));
}

void press(QWidget& widget, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, {});
    QApplication::sendEvent(&widget, &event);
}

/// Scrolls the list to the first period in which nothing was observed.
void atAGap(const Studio& studio) {
    auto& list = widgetIn<TimelineView>(*studio.window);
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        const QModelIndex index = list.model()->index(row, 0);
        if (TimelineModel::kindOf(index) >= TimelineModel::RowKind::gap)
            return list.scrollTo(index, QAbstractItemView::PositionAtCenter);
    }
    throw Error("The list has no gap.");
}

/// Opens a folder in the map, so that it shows the parts of the folder.
void insideAFolder(const Studio& studio) {
    atFolderSizes(studio);
    auto& table = tree(studio);
    table.setCurrentIndex(table.model()->index(0, 0));
    auto& map = widgetIn<FolderMapView>(*studio.window);
    map.setFocus();
    press(map, Qt::Key_Return);
    press(map, Qt::Key_Right);
}

/// Shows the chart of a folder, or of the free space if `folder` is empty, with the cursor at this
/// share of its width.
StorageChartView& chartOf(const Studio& studio, const std::string& folder, double share) {
    studio.history().navigate(WorkspaceDestination::storageOverTime, true);
    auto& growth = studio.model().growth();
    growth.choose(folder);
    settle(studio);
    while (!growth.content() || growth.isPreparing())
        settle(studio);
    settle(studio);
    auto& chart = widgetIn<StorageChartView>(*studio.window);
    chart.setFocus();
    chart.setCursor(static_cast<std::size_t>(share * (chart.partCount() - 1)));
    return chart;
}

void atFreeSpace(const Studio& studio) {
    auto& chart = chartOf(studio, "", 0.35);
    press(chart, Qt::Key_Space);
    chart.setCursor(static_cast<std::size_t>(0.8 * chart.partCount()));
    press(chart, Qt::Key_Space);
    chart.setCursor(static_cast<std::size_t>(0.55 * chart.partCount()));
}

void atAFolderOverTime(const Studio& studio) {
    chartOf(studio, "/home/ada/Projects", 0.97);
    select(studio, "Projects");
}

void atTheTableOfAChart(const Studio& studio) {
    chartOf(studio, "", 0.9);
    for (auto* button : studio.window->findChildren<QToolButton*>())
        if (button->accessibleName() == StorageOverTimeView::tr("Show as a table"))
            button->click();
}

void atTwoCaptures(const Studio& studio) {
    const auto& snapshots = studio.model().state().journal()->snapshots;
    studio.history().compareCaptures(
        {{snapshots[snapshots.size() - 200], {}}, {snapshots.back(), {}}});
    settle(studio);
    select(studio, "Projects");
}

void openSnapshot(const Studio& studio, std::string_view name, SnapshotViewMode mode) {
    for (const auto& each : studio.model().state().journal()->baselines)
        if (each.name.starts_with(name))
            studio.history().openSnapshot(each.id);
    studio.history().setSnapshotViewMode(mode);
}

std::function<void(const Studio&)> atPlace(WorkspaceDestination place) {
    return [place](const Studio& studio) {
        studio.history().navigate(place, true);
        settle(studio);
        const auto& events = studio.history().presentation().events;
        if (!events.empty())
            studio.history().setSelected(events.front());
    };
}

void withoutHistory(Studio& studio) {
    studio.recorder = std::make_unique<DemoRecorder>(studio.folder.path().toStdString(),
                                                     MadeUpHistory{}, pictured());
}

void withUnreadableHistory(Studio& studio) {
    QFile file(studio.folder.filePath(QStringLiteral("journal.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write("{\"schemaVersion\": 1, \"snap") < 0)
        throw Error("The damaged history could not be written.");
    file.close();
    withoutHistory(studio);
}

std::vector<Scene> scenes() {
    const auto none = [](const Studio&) {};
    return {
        {.name = "timeline", .arrange = atTheTimeline},
        {.name = "timeline-dark", .arrange = atTheTimeline, .isDark = true},
        {.name = "timeline-right-to-left", .arrange = atTheTimeline, .isMirrored = true},
        {.name = "timeline-large-text",
         .arrange =
             [](const Studio& studio) {
                 atTheTimeline(studio);
                 for (int i = 0; i < 6; ++i)
                     studio.recorder->uses().viewSettings.changeListingTextSize(1);
             }},
        {.name = "timeline-narrow", .arrange = atTheTimeline, .size = {640, 800}},
        {.name = "timeline-nothing-selected", .arrange = none},
        {.name = "timeline-gaps", .arrange = atAGap},
        {.name = "search",
         .arrange = [](const Studio& studio) { studio.history().setSearch("draw"); }},
        {.name = "search-without-result",
         .arrange = [](const Studio& studio) { studio.history().setSearch("nothing like it"); }},
        {.name = "files", .arrange = atPlace(WorkspaceDestination::files)},
        {.name = "clipboard", .arrange = atPlace(WorkspaceDestination::clipboard)},
        {.name = "applications", .arrange = atPlace(WorkspaceDestination::applications)},
        {.name = "folder-sizes", .arrange = atFolderSizes},
        {.name = "folder-sizes-dark", .arrange = atFolderSizes, .isDark = true},
        {.name = "folder-sizes-right-to-left", .arrange = atFolderSizes, .isMirrored = true},
        {.name = "folder-sizes-inside", .arrange = insideAFolder},
        {.name = "storage-over-time", .arrange = atFreeSpace},
        {.name = "storage-over-time-dark", .arrange = atFreeSpace, .isDark = true},
        {.name = "storage-over-time-right-to-left", .arrange = atFreeSpace, .isMirrored = true},
        {.name = "storage-over-time-event", .arrange = atAFolderOverTime},
        {.name = "storage-over-time-table", .arrange = atTheTableOfAChart},
        {.name = "compare-captures", .arrange = atTwoCaptures},
        {.name = "digest", .arrange = none, .daysAway = 3},
        {.name = "digest-dark", .arrange = none, .isDark = true, .daysAway = 3},
        {.name = "snapshot",
         .arrange =
             [](const Studio& studio) {
                 openSnapshot(studio, "Before the", SnapshotViewMode::timeline);
             }},
        {.name = "compare-states",
         .arrange =
             [](const Studio& studio) {
                 openSnapshot(studio, "Before the", SnapshotViewMode::states);
                 settle(studio);
                 select(studio, "Projects");
             }},
        {.name = "snapshots-place",
         .arrange =
             [](const Studio& studio) {
                 studio.history().navigate(WorkspaceDestination::snapshots, true);
             }},
        {.name = "capture-running",
         .arrange =
             [](const Studio& studio) {
                 studio.recorder->captureDuration = 60;
                 studio.recorder->uses().tasks.start(studio.model().scan());
             }},
        {.name = "empty", .arrange = none, .prepare = withoutHistory},
        {.name = "first-run", .arrange = none, .prepare = withoutHistory, .isFirstStart = true},
        {.name = "first-run-dark",
         .arrange = none,
         .isDark = true,
         .prepare = withoutHistory,
         .isFirstStart = true},
        {.name = "error", .arrange = none, .prepare = withUnreadableHistory},
    };
}

QCoro::Task<void> start(DemoRecorder& recorder, bool isFirstStart) {
    if (isFirstStart)
        co_await recorder.setUp();
    else
        co_await recorder.open();
}

Studio opened(const Scene& scene, const MadeUpHistory& history) {
    Studio studio;
    scene.prepare(studio);
    if (!studio.recorder)
        studio.recorder =
            std::make_unique<DemoRecorder>(studio.folder.path().toStdString(), history, pictured());
    if (scene.daysAway > 0)
        studio.recorder->preferences().note(
            preferenceKeys::historyLastSeen.name,
            static_cast<std::int64_t>(pictured().secondsSince1970() - scene.daysAway * 86'400));
    studio.window = std::make_unique<WorkspaceWindow>(studio.recorder->uses());
    studio.window->resize(scene.size);
    studio.window->show();
    studio.recorder->uses().tasks.start(start(*studio.recorder, scene.isFirstStart));
    const auto isReading = [&] {
        return !studio.model().state().loaded() && !*studio.model().state().error;
    };
    while (isReading())
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    settle(studio);
    return studio;
}

void photograph(const Scene& scene, const MadeUpHistory& history, const QString& folder) {
    QApplication::setPalette(scene.isDark ? palettes::dark() : palettes::light());
    QIcon::setThemeName(scene.isDark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
    QApplication::setLayoutDirection(scene.isMirrored ? Qt::RightToLeft : Qt::LeftToRight);
    Studio studio = opened(scene, history);
    scene.arrange(studio);
    settle(studio, 500);
    write(*studio.window, folder, QString::fromLatin1(scene.name));
    studio.model().stopAutomaticCaptures();
    studio.window.reset();
}

/// Takes the pictures of the windows and dialogs besides the main window.
void photographDialogs(const MadeUpHistory& history, const QString& folder,
                       const QStringList& only) {
    Studio studio = opened({.name = "", .arrange = {}}, history);
    const auto take = [&](QWidget& dialog, const char* name) {
        if (!isWanted(name, only))
            return;
        dialog.show();
        settle(studio);
        write(dialog, folder, QString::fromLatin1(name));
        dialog.hide();
    };
    auto& tasks = studio.recorder->uses().tasks;
    studio.history().beginExport();
    ExportDialog exporting(*studio.history().exportReport(), tasks, nullptr);
    take(exporting, "export");
    CoverageDialog coverage(CoverageList::of(studio.history().observationCoverage(), Calendar()),
                            nullptr);
    take(coverage, "coverage");
    ImportDialog importing(studio.model(), tasks, nullptr);
    importing.readAgain();
    take(importing, "import");
    DemoWindows windows(*studio.recorder);
    windows.settings().resize(settingsSize);
    take(windows.settings(), "settings");
    windows.settings().verticalScrollBar()->setValue(
        windows.settings().verticalScrollBar()->maximum());
    take(windows.settings(), "settings-end");
    windows.search().open();
    widgetIn<QLineEdit>(windows.search()).setText(QStringLiteral("draw"));
    take(windows.search(), "search-panel");
    tasks.start(studio.model().snapshots().beginSavedSnapshot());
    settle(studio);
    SaveSnapshotDialog saving(studio.model(), tasks, nullptr);
    widgetIn<QLineEdit>(saving).setText(QStringLiteral("Before the upgrade"));
    take(saving, "save-snapshot");
    studio.model().snapshots().cancelSavedSnapshot();
}

} // namespace

void takeScreenshots(const QString& folder, const QStringList& only) {
    if (!QDir().mkpath(folder))
        throw Error(folder.toStdString() + " could not be created.");
    // Without a desktop, icons are not looked for where they are installed.
    QIcon::setThemeSearchPaths(QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                         QStringLiteral("icons"),
                                                         QStandardPaths::LocateDirectory));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    const auto history = MadeUpHistory::endingAt(pictured());
    for (const auto& scene : scenes())
        if (isWanted(scene.name, only))
            photograph(scene, history, folder);
    QApplication::setPalette(palettes::light());
    QIcon::setThemeName(QStringLiteral("breeze"));
    QApplication::setLayoutDirection(Qt::LeftToRight);
    photographDialogs(history, folder, only);
}

} // namespace tidemark::demo
