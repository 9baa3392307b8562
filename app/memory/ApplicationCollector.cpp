#include "app/memory/ApplicationCollector.h"

#include "app/memory/MemoryHistoryService.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/memory/ExcludedApplications.h"

namespace tidemark {

void ApplicationCollector::start(MemoryHistoryService& history) {
    if (source && read(preferences, preferenceKeys::memoryApps))
        source->start([this, &history](const auto& change) { record(history, change); });
}

void ApplicationCollector::stop() {
    if (source)
        source->stop();
}

void ApplicationCollector::record(MemoryHistoryService& history,
                                  const ApplicationSource::Change& change) {
    const auto& [id, name, path] = change.application;
    if (!history.active() || !read(preferences, preferenceKeys::memoryApps) || id.empty()
        || id == ApplicationSource::ownIdentifier
        || isExcludedApplication(read(preferences, preferenceKeys::memoryExcludedApps), id))
        return;
    const bool isLaunch = change.kind == ApplicationSource::Change::Kind::launched;
    const std::string shown = name.empty() ? "Application" : name;
    auto record = MemoryRecord::make(
        isLaunch ? MemoryRecord::Kind::appLaunched : MemoryRecord::Kind::appClosed, change.moment,
        shown + (isLaunch ? " Launched" : " Closed"), {}, {}, id);
    if (!path.empty())
        record.path = path;
    if (!name.empty())
        record.appName = name;
    history.update({std::move(record)});
}

} // namespace tidemark
