#pragma once

#include "app/base/Observable.h"
#include "app/monitors/MonitorStatus.h"
#include "app/preferences/SettingSource.h"
#include "core/records/SystemActivity.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Follows one aspect of the machine and makes a record of each change. Emits `changed` when its
/// statuses have changed. Main thread only.
class ActivityMonitor : public Observable {
public:
    using Record = std::function<void(SystemActivity)>;

    /// Starts to follow. The first state is a starting point; `record` is called with every change
    /// after it.
    virtual void start(Record record) = 0;
    /// Stops. `record` is not called any more.
    virtual void stop() = 0;

    /// Why a source has nothing to observe on this machine, as a sentence. Has no value where there
    /// is something to observe, and while that is not known.
    using Absence = std::optional<std::string>;
    /// The sources that it provides to the settings (`SettingSources`), with their absences.
    virtual std::map<SettingSource, Absence> settingSources() const = 0;
    /// What it observes at present, one line for each part.
    virtual std::vector<MonitorStatus> statuses() const = 0;
};

} // namespace tidemark
