// The first start of the file history on a home folder with 200,000 files: how long until the files
// of the last 30 days are recorded, and how long the event loop is blocked meanwhile.

#include "app/memory/FileCollector.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/HistoryScreen.h"
#include "app/model/ModelState.h"
#include "app/ports/SystemServices.h"
#include "app/preferences/JsonPreferences.h"
#include "bench/MeasuredLoop.h"
#include "bench/Report.h"
#include "bench/Workspace.h"

#include <chrono>
#include <cstdlib>
#include <fstream>

using namespace tidemark;
using namespace tidemark::bench;
namespace fs = std::filesystem;

namespace {

constexpr int folders = 20;
constexpr int foldersEach = 100;
constexpr int filesEach = 100;

void makeHome(const fs::path& home) {
    const auto old = fs::file_time_type::clock::now() - std::chrono::days(5);
    for (int i = 0; i < folders; ++i)
        for (int j = 0; j < foldersEach; ++j) {
            const auto folder = home / "Documents" / std::to_string(i) / std::to_string(j);
            fs::create_directories(folder);
            for (int k = 0; k < filesEach; ++k)
                std::ofstream(folder / ("Quarterly report " + std::to_string(k) + ".odt"));
            fs::last_write_time(folder / "Quarterly report 0.odt", old);
        }
}

/// Everything that a record passes through until it is in the history that is shown.
void firstStart(MeasuredLoop& loop, const fs::path& home) {
    JsonPreferences preferences(home / "settings.json");
    ModelState state(preferences, Date::now());
    NotificationCenter workspace;
    FileCollector files({.preferences = preferences, .index = systemServices::fileIndex()});
    MemoryHistoryService memory({.url = home / "data/memory-history.json",
                                 .preferences = preferences,
                                 .workspaceCenter = workspace,
                                 .collectors = {&files}});
    TaskScope tasks;
    HistoryScreen screen(state, preferences, AppClock::system(), tasks);
    QObject::connect(&memory, &MemoryHistoryService::changed, &screen,
                     [&] { screen.setMemory(memory.archive()); });
    const auto loading = memory.load();
    loop.runUntil([&] { return memory.isLoaded(); });

    loop.longest = {};
    const double duration = seconds([&] {
        loop.longest.measure([&] { memory.start(); });
        loop.runUntil([&] { return files.status().starts_with("Indexed files"); });
    });
    row("200,000 files: first 30 days found and recorded", duration, "s", 10);
    rows("meanwhile", loop.longest);
    row("records", static_cast<double>(memory.archive().records.size()), "");
    memory.stop();
}

} // namespace

int main(int count, char** arguments) {
    MeasuredLoop loop(count, arguments);
    const Workspace workspace;
    ::setenv("HOME", workspace.path().c_str(), 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "none:", 1);
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
        ::unsetenv(variable);
    makeHome(workspace.path());
    firstStart(loop, workspace.path());
}
