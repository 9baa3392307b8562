// The activity file at its limit: appending to it while the event loop runs, reading it, and making
// events of its records.

#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "bench/MeasuredLoop.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/activity/ActivityEventBuilder.h"
#include "core/activity/SystemActivityStore.h"
#include "core/base/Files.h"
#include "core/base/JsonEncoder.h"

using namespace tidemark;
using namespace tidemark::bench;
using Kind = SystemActivity::Kind;

namespace {

constexpr int runs = 51;
constexpr std::size_t appended = 100;

/// In turn a record of a lost connection, of a lost Wi-Fi link and of a volume.
std::vector<Shared<SystemActivity>> fullHistory() {
    const auto online = NetworkConnectionState::make(
        NetworkConnectionState::Availability::available, {NetworkConnectionState::Interface::wifi});
    std::vector<Shared<SystemActivity>> records;
    for (std::size_t i = 0; i < SystemActivityStore::mostRecords; ++i) {
        const std::size_t whole = i / 3;
        const auto round = static_cast<double>(whole);
        auto activity = SystemActivity::observed(Kind::networkChanged, Date{round * 60});
        if (i % 3 == 0) {
            NetworkConnectionChange change;
            change.before = online;
            activity.networkChange.emplace(std::move(change));
        } else if (i % 3 == 1) {
            activity.kind = Kind::wifiChanged;
            activity.wifiConnected = false;
            activity.wifiContext.emplace({"A network with a name", "5 GHz", 36, "WPA3", -60, 866});
            activity.previousWiFi = activity.wifiContext;
        } else {
            activity.kind = Kind::volumeChanged;
            EnvironmentActivity volume;
            volume.deviceName = "A volume with a longer name";
            volume.path = "/Volumes/A volume with a longer name";
            volume.volume.emplace();
            activity.environmentActivity.emplace(std::move(volume));
        }
        records.emplace_back(std::move(activity));
    }
    return records;
}

void appending(MeasuredLoop& loop, const std::filesystem::path& file) {
    JsonPreferences preferences(file.parent_path() / "settings.json");
    ModelState state(preferences, Date::now());
    NotificationCenter workspace;
    MemoryHistoryService memory({.url = file.parent_path() / "memory-history.json",
                                 .preferences = preferences,
                                 .workspaceCenter = workspace});
    LiveWiring live(
        {.state = state, .activityURL = file, .workspaceCenter = workspace, .memory = memory});
    const auto shown = [&] { return state.activityRevision(); };

    loop.longest = {};
    loop.longest.measure([&] { live.startActivityMonitors(); });
    loop.runUntil([&] { return shown() == 1; });
    rows("opening 2,000 records", loop.longest);

    // Records are appended first one after the other, then all at once.
    const auto append = [&] { workspace.post(notification::willSleep); };
    loop.longest = {};
    const double duration = seconds([&] {
        for (std::size_t i = 0; i < appended; ++i) {
            loop.longest.measure(append);
            loop.runUntil([&] { return shown() == i + 2; });
        }
    });
    row("a record until it is shown, 2,000 in the file", duration / appended * 1e3, "ms");
    rows("100 appends", loop.longest);
    loop.longest = {};
    loop.longest.measure([&] {
        for (std::size_t i = 0; i < appended; ++i)
            append();
    });
    loop.runUntil([&] { return shown() == 2 * appended + 1; });
    rows("100 records at once", loop.longest);
}

} // namespace

int main(int count, char** arguments) {
    MeasuredLoop loop(count, arguments);
    const Workspace workspace;
    const auto file = workspace.path() / "system-activity.json";
    const auto records = fullHistory();
    replaceFile(file, json::encoded(records));

    std::size_t events = 0;
    row("events of 2,000 activity records",
        medianOf(
            runs,
            [&] { return seconds([&] { events = ActivityEventBuilder::build(records).size(); }); })
            * 1e3,
        "ms", 5);
    row("events made", static_cast<double>(events), "");
    row("read 2,000 activity records",
        medianOf(runs, [&] { return seconds([&] { SystemActivityStore::read(file); }); }) * 1e3,
        "ms");
    appending(loop, file);
}
