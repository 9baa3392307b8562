#pragma once

#include "app/memory/MemoryCollector.h"
#include "app/ports/ApplicationSource.h"
#include "app/preferences/Preferences.h"

namespace tidemark {

/// Records launches and quits of applications, unless turned off by the setting. Those of this
/// program and of excluded applications are not recorded. Main thread only.
class ApplicationCollector final : public MemoryCollector {
public:
    /// The identifier of this program as an application.
    static constexpr std::string_view ownIdentifier = "app.tidemark";

    /// Both must outlive the collector.
    ApplicationCollector(Preferences& preferences, ApplicationSource& source)
        : preferences(preferences), source(source) {}

    void start(MemoryHistoryService& history) override;
    void stop() override { source.stop(); }

private:
    void record(MemoryHistoryService& history, const ApplicationSource::Change& change);

    Preferences& preferences;
    ApplicationSource& source;
};

} // namespace tidemark
