#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/ports/ThermalSource.h"
#include "platform/linux/PowerProfiles.h"
#include "platform/linux/ThermalPressure.h"

#include <filesystem>
#include <functional>

namespace tidemark {

/// Reads the thermal pressure from the kernel at intervals, in the background, and at once when the
/// power daemon reports a lowered performance. Main thread only.
class ThermalWatch final : public ThermalSource {
public:
    /// Seconds between two readings; shorter while the state is changing.
    static constexpr double interval = 30;
    static constexpr double intervalWhileChanging = 10;
    /// Without a zone; some appear when a driver is loaded later.
    static constexpr double intervalWithoutZones = 600;

    /// `sys` is /sys. `clock` must outlive this object.
    ThermalWatch(std::filesystem::path sys, const MessageBus& bus, AppClock& clock,
                 std::function<void()> didChange);
    ~ThermalWatch() override;

    std::optional<std::string_view> state() const override { return published; }

private:
    QCoro::Task<void> watch();
    double timeToNext() const;

    const std::filesystem::path sys;
    AppClock& clock;
    const std::function<void()> didChange;
    ThermalPressure pressure;
    std::optional<std::string_view> published;
    PowerProfiles profiles;
    /// Requested for a reading before the interval is over.
    std::stop_source early;
    TaskScope tasks;
};

} // namespace tidemark
