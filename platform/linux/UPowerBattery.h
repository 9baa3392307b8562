#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/ports/BatterySource.h"
#include "core/activity/PowerSource.h"
#include "platform/linux/GuardedSubscription.h"
#include "platform/linux/ReadDelay.h"

#include <QStringList>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace tidemark {

/// Reads the internal batteries from UPower (https://upower.freedesktop.org/docs), the one service
/// that is started when it does not run: it changes nothing on the machine. Main thread only.
///
/// The signals of a change arrive one by one and in varying order, so each causes everything to be
/// read again.
class UPowerBattery final : public BatterySource {
public:
    /// Seconds after the creation until a reading counts. Batteries and their drivers often report
    /// the state from before a sleep for some seconds after it.
    static constexpr double provisional = 3;

    /// `clock` must outlive this object.
    UPowerBattery(const MessageBus& bus, AppClock& clock, std::function<void()> didChange);
    ~UPowerBattery() override;

    State state() const override { return now; }
    std::optional<BatteryObservation> reading() const override { return battery; }
    std::optional<std::string> absence() const override;

private:
    /// One reading of everything.
    struct Round {
        std::size_t missingReplies = 0;
        std::optional<bool> onBattery;
        std::map<QString, QVariantMap> devices;
    };

    void follow();
    void subscribe();
    QCoro::Task<void> endProvisionalTime(std::uint64_t owner);
    void refresh();
    void read();
    void readDevices(const QStringList& paths);
    void receive();
    void finish();
    void findBatteries();
    void readAfter(const GuardedSubscription::Signal& signal, const QStringList& properties);
    void publish(State state, std::optional<BatteryObservation> reading);

    AppClock& clock;
    const std::function<void()> didChange;
    State now = State::unknown;
    std::optional<BatteryObservation> battery;
    /// Incremented with each owner of the service.
    std::uint64_t owners = 0;
    bool isProvisional = true;
    bool isReading = false;
    /// A signal arrived during the reading.
    bool isOutdated = false;
    Round round;
    /// The number of the present round; replies for an earlier one are dropped.
    std::uint64_t rounds = 0;
    ReadDelay delay;
    BusService upower;
    /// The object paths of the internal batteries. Other devices are not followed: a phone or a
    /// mouse reports its own changes often.
    std::set<QString> batteries;
    std::vector<std::unique_ptr<GuardedSubscription>> subscriptions;
    TaskScope tasks;
};

} // namespace tidemark
