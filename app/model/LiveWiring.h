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

/// The live services of the running program: the activity file with the monitors that feed it, and
/// the memory history. Main thread only.
class LiveWiring final : public LiveServices {
public:
    /// All that is given by reference outlives this.
    struct Setup {
        /// Shows the records, and says whether there may be any.
        ModelState& state;
        std::filesystem::path activityURL;
        NotificationCenter& workspaceCenter;
        MemoryHistoryService& memory;
        /// Asked before the activity file is written.
        FolderGuard guard{};
        AppClock& clock = AppClock::system();
        /// Started in this order, and stopped in it.
        std::vector<ActivityMonitor*> monitors{};
        /// The battery as it is now; absent while its history is off or there is none.
        std::function<std::optional<BatteryObservation>()> battery = [] { return std::nullopt; };
    };

    explicit LiveWiring(Setup setup);
    ~LiveWiring() override;

    /// Waits until all that was recorded so far is on disk.
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
    AppClock& time;
    const std::vector<ActivityMonitor*> monitors;
    MemoryHistoryService& memory;
    PowerActivityMonitor power;
    TaskScope tasks;
};

} // namespace tidemark
