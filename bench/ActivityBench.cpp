// The activity file at its limit: appending to it beside a running event loop, reading it, and
// making events of what it holds.

#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/activity/ActivityEventBuilder.h"
#include "core/activity/SystemActivityStore.h"
#include "core/base/Files.h"
#include "core/base/JsonEncoder.h"

#include <QCoreApplication>
#include <QTimer>

using namespace tidemark;
using namespace tidemark::bench;
using Kind = SystemActivity::Kind;

namespace {

constexpr int runs = 51;
constexpr std::size_t appended = 100;

/// Records of all sizes, and as many drops of the Wi-Fi as there can be.
std::vector<SystemActivity> fullHistory() {
    const auto online = NetworkConnectionState::make(
        NetworkConnectionState::Availability::available, {NetworkConnectionState::Interface::wifi});
    std::vector<SystemActivity> records;
    for (std::size_t i = 0; i < SystemActivityStore::mostRecords; ++i) {
        auto activity =
            SystemActivity::observed(Kind::networkChanged, Date{static_cast<double>(i / 3) * 60});
        if (i % 3 == 0) {
            activity.networkChange.emplace().before = online;
        } else if (i % 3 == 1) {
            activity.kind = Kind::wifiChanged;
            activity.wifiConnected = false;
            activity.wifiContext =
                WiFiContext{"A network with a name", "5 GHz", 36, "WPA3", -60, 866};
            activity.previousWiFi = activity.wifiContext;
        } else {
            activity.kind = Kind::volumeChanged;
            auto& volume = activity.environmentActivity.emplace();
            volume.deviceName = "A volume with a longer name";
            volume.path = "/Volumes/A volume with a longer name";
            volume.volume.emplace();
        }
        records.push_back(std::move(activity));
    }
    return records;
}

/// The longest that the event loop is away while it runs until `done`, in seconds.
template <class Condition>
double longestBlock(const Condition& done) {
    double longest = 0;
    while (!done())
        longest = std::max(longest, seconds([] { QCoreApplication::processEvents(); }));
    return longest;
}

void appending(const std::filesystem::path& file) {
    JsonPreferences preferences(file.parent_path() / "settings.json");
    ModelState state(preferences, false, {}, Date::now());
    NotificationCenter workspace;
    LiveWiring live({.activityURL = file, .workspaceCenter = workspace});
    live.attach(state);
    std::size_t shown = 0;
    QObject::connect(&state, &ModelState::systemActivityChanged, [&] { ++shown; });

    double opening = seconds([&] { live.startActivityMonitors(); });
    opening = std::max(opening, longestBlock([&] { return shown == 1; }));
    row("longest block of the loop, opening 2,000 records", opening * 1e3, "ms", 10);

    // Each alone, as they come, and then all at once.
    std::vector<double> blocks;
    const double duration = seconds([&] {
        for (std::size_t i = 0; i < appended; ++i) {
            const double taking = seconds([&] { workspace.post(notification::willSleep); });
            blocks.push_back(std::max(taking, longestBlock([&] { return shown == i + 2; })));
        }
    });
    row("a record until it is shown, 2,000 in the file", duration / appended * 1e3, "ms");
    row("longest block of the loop, one append, median", median(blocks) * 1e3, "ms", 10);
    row("longest block of the loop, 100 appends", std::ranges::max(blocks) * 1e3, "ms", 10);
    const double taking = seconds([&] {
        for (std::size_t i = 0; i < appended; ++i)
            workspace.post(notification::willSleep);
    });
    const double burst = longestBlock([&] { return shown == 2 * appended + 1; });
    row("longest block of the loop, 100 records at once", std::max(taking, burst) * 1e3, "ms", 10);
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
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
    appending(file);
}
