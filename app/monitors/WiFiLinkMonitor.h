#pragma once

#include "app/monitors/ActivityMonitor.h"
#include "app/monitors/SettlingTimer.h"
#include "app/monitors/WiFiDetailsProvider.h"
#include "app/ports/WiFiSource.h"
#include "core/activity/NamedWiFiHistory.h"

namespace tidemark {

/// Records changes of the Wi-Fi link and, where allowed, of the network's name. Nothing that
/// was seen before a start is compared with what follows it. Main thread only.
class WiFiLinkMonitor {
public:
    /// The arguments must outlive this object. `tasks` owns the coroutine that waits until a change
    /// has lasted long enough to be recorded.
    WiFiLinkMonitor(WiFiSource& source, WiFiDetailsProvider& details, AppClock& clock,
                    TaskScope& tasks);
    ~WiFiLinkMonitor() { stop(); }

    /// False when links can't be followed.
    bool start(ActivityMonitor::Record record);
    void stop();

private:
    bool startSource();
    void observe(const WiFiSource::Links& links);
    std::optional<WiFiObservation> observation(const WiFiSource::Links& links) const;
    void settle(Date at);

    WiFiSource& source;
    WiFiDetailsProvider& details;
    AppClock& clock;
    ActivityMonitor::Record record;
    NamedWiFiHistory history;
    SettlingTimer timer;
    bool isStarted = false;
    /// Incremented by every start and stop of the source. Links that arrive with an earlier number
    /// are dropped.
    std::uint64_t generation = 0;
};

} // namespace tidemark
