#pragma once

#include "app/memory/MemoryHistoryService.h"
#include "app/model/LiveServices.h"
#include "app/model/ModelState.h"
#include "app/monitors/ActivityMonitor.h"
#include "app/monitors/PowerActivityMonitor.h"

#include <functional>
#include <string_view>
#include <vector>

namespace tidemark {

/// The live services of the running program: the activity file, its monitors, and the memory
/// history. Main thread only.
class LiveWiring final : public LiveServices {
public:
    /// References must outlive this object.
    struct Setup {
        /// Gets the records, and determines whether recording is allowed.
        ModelState& state;
        std::filesystem::path activityURL;
        NotificationCenter& workspaceCenter;
        MemoryHistoryService& memory;
        /// Checked before the activity file is written.
        FolderGuard guard{};
        AppClock& clock = AppClock::system();
        /// Started and stopped in this order.
        std::vector<ActivityMonitor*> monitors{};
        /// Reads the present state of the battery. Its result is absent on a machine without a
        /// battery and while the history of the battery is turned off.
        PowerActivityMonitor::ReadBattery battery = PowerActivityMonitor::noBattery;
    };

    explicit LiveWiring(Setup setup);
    ~LiveWiring() override;

    /// Waits until every accepted record has been written or could not be written.
    QCoro::Task<void> writer();

    QCoro::Task<void> loadMemory() override { return memory.load(); }
    void startActivityMonitors() override;
    void startMemory() override { memory.start(); }
    void stop() override;
    std::optional<std::string> memoryFailure() const override { return memory.failure(); }

private:
    QCoro::Task<void> openActivity();
    void showActivity(PowerActivityMonitor::Records records);
    void showActivityError(std::string_view sentence);
    PowerActivityMonitor::Callbacks callbacks(const Setup& setup);

    ModelState& state;
    AppClock& clock;
    const std::vector<ActivityMonitor*> monitors;
    MemoryHistoryService& memory;
    PowerActivityMonitor power;
    TaskScope tasks;
};

} // namespace tidemark
