#include "core/activity/EnvironmentHistory.h"

#include "core/activity/ThermalState.h"
#include "core/base/Text.h"

#include <cmath>
#include <utility>

namespace tidemark {

namespace {

using Entries = EnvironmentHistory::Entries;
using Kind = SystemActivity::Kind;

bool isElevated(const std::optional<std::string>& thermal) {
    return thermal && ThermalState::isElevated(*thermal);
}

SystemActivity recordOf(Kind kind, Date at, EnvironmentActivity activity) {
    auto record = SystemActivity::observed(kind, at);
    record.environmentActivity.emplace(std::move(activity));
    return record;
}

void appendAddedAndRemoved(std::vector<SystemActivity>& records, Kind kind, const Entries& before,
                           const Entries& after, Date at) {
    Entries changed;
    for (const auto& [key, entry] : before)
        if (!after.contains(key))
            changed.emplace(key, entry).first->second.connected = false;
    for (const auto& [key, entry] : after)
        if (!before.contains(key))
            changed.emplace(key, entry).first->second.connected = true;
    for (auto& [key, entry] : changed)
        records.push_back(recordOf(kind, at, std::move(entry)));
}

void appendReconfigured(std::vector<SystemActivity>& records, const Entries& before,
                        const Entries& after, Date at) {
    for (const auto& [key, old] : before) {
        const auto found = after.find(key);
        if (found == after.end() || !old.display || !found->second.display)
            continue;
        if (old.display == found->second.display)
            continue;
        EnvironmentActivity activity = found->second;
        activity.connected.reset();
        activity.previousDisplay = old.display;
        records.push_back(recordOf(Kind::displayChanged, at, std::move(activity)));
    }
}

} // namespace

std::vector<SystemActivity> EnvironmentHistory::receive(State now, Date at) {
    std::vector<SystemActivity> records;
    if (last)
        records = changes(*last, now, at);
    if (!isElevated(now.thermal))
        elevatedSince.reset();
    else if (last && last->thermal && !isElevated(last->thermal))
        elevatedSince = at;
    last = std::move(now);
    return records;
}

std::vector<SystemActivity> EnvironmentHistory::changes(const State& before, const State& after,
                                                        Date at) const {
    std::vector<SystemActivity> records;
    appendAddedAndRemoved(records, Kind::volumeChanged, before.volumes, after.volumes, at);
    if (before.displays && after.displays) {
        appendAddedAndRemoved(records, Kind::displayChanged, *before.displays, *after.displays, at);
        appendReconfigured(records, *before.displays, *after.displays, at);
    }
    const bool isElevatedNowOrBefore = isElevated(before.thermal) || isElevated(after.thermal);
    const bool isKnown = before.thermal && after.thermal;
    if (isKnown && before.thermal != after.thermal && isElevatedNowOrBefore) {
        EnvironmentActivity activity;
        activity.deviceName = "Mac";
        activity.state = after.thermal;
        activity.previousState = before.thermal;
        activity.elevatedSince = elevatedSince;
        records.push_back(recordOf(Kind::thermalChanged, at, std::move(activity)));
    }
    return records;
}

EnvironmentActivity volumeEntry(std::string path, std::optional<VolumeContext> volume) {
    EnvironmentActivity entry;
    const bool named = volume && !volume->name.empty();
    entry.deviceName = named ? volume->name : std::string(lastPathComponent(path));
    entry.path = std::move(path);
    entry.volume = std::move(volume);
    return entry;
}

EnvironmentActivity displayEntry(std::string name, std::optional<DisplayContext> mode) {
    EnvironmentActivity entry;
    entry.deviceName = std::move(name);
    entry.display = mode;
    if (!entry.display)
        return entry;
    // JSON has no NaN or infinity: such a value would make writing the whole record fail.
    auto& shown = *entry.display;
    if (!std::isfinite(shown.scale))
        shown.scale = 1;
    const double rate = shown.refreshRate.value_or(0);
    if (rate <= 0 || !std::isfinite(rate))
        shown.refreshRate.reset();
    return entry;
}

} // namespace tidemark
