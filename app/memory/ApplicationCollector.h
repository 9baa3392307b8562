#pragma once

#include "app/memory/MemoryCollector.h"
#include "app/ports/ApplicationSource.h"
#include "app/preferences/Preferences.h"

#include <memory>

namespace tidemark {

/// Records launches and quits of applications while the setting `memoryApps` is on. Those of this
/// program and of excluded applications are not recorded. Main thread only.
class ApplicationCollector final : public MemoryCollector {
public:
    /// `preferences` must outlive the collector; `source` is null where the system has none.
    ApplicationCollector(Preferences& preferences, std::unique_ptr<ApplicationSource> source)
        : preferences(preferences), source(std::move(source)) {}

    void start(MemoryHistoryService& history) override;
    void stop() override;

private:
    void record(MemoryHistoryService& history, const ApplicationSource::Change& change);

    Preferences& preferences;
    const std::unique_ptr<ApplicationSource> source;
};

} // namespace tidemark
