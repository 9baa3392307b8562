#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/ports/ThermalSource.h"
#include "platform/linux/PowerProfiles.h"
#include "platform/linux/ThermalEvents.h"
#include "platform/linux/ThermalPressure.h"

#include <QSocketNotifier>
#include <filesystem>
#include <functional>
#include <memory>

namespace tidemark {

/// Reads the thermal pressure from the kernel in the background: at intervals, and at once when the
/// kernel reports that a trip was passed or when the power daemon reports that it lowered the
/// performance. Most zones report nothing and messages may be lost, so the intervals are needed,
/// too. Main thread only.
class ThermalWatch final : public ThermalSource {
public:
    /// Seconds between two readings; shorter while the state is changing.
    static constexpr double interval = 30;
    static constexpr double intervalWhileChanging = 10;
    /// Without a zone; some appear when a driver is loaded later.
    static constexpr double intervalWithoutZones = 600;

    /// Opens a socket that becomes readable with each message of the kernel; called on any thread.
    using OpenEvents = std::function<FileDescriptor()>;

    /// `sys` is /sys. `clock` must outlive this object.
    ThermalWatch(std::filesystem::path sys, const MessageBus& bus, AppClock& clock,
                 std::function<void()> didChange, OpenEvents openEvents = &thermalEvents::open);
    ~ThermalWatch() override;

    std::optional<std::string_view> state() const override { return published; }

private:
    struct Reading {
        ThermalZones zones;
        FileDescriptor events;
    };

    QCoro::Task<void> watch();
    QCoro::Task<void> read();
    double timeToNext() const;
    void readEarly();
    void listen();

    const std::filesystem::path sys;
    AppClock& clock;
    const std::function<void()> didChange;
    const OpenEvents openEvents;
    ThermalPressure pressure;
    std::optional<std::string_view> published;
    PowerProfiles profiles;
    /// Requested for a reading before the interval is over.
    std::stop_source early;
    /// Opened when there is a zone.
    FileDescriptor events;
    std::unique_ptr<QSocketNotifier> eventsNotifier;
    TaskScope tasks;
};

} // namespace tidemark
