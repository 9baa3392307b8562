#pragma once

#include "app/ports/LowPowerModeSource.h"
#include "platform/linux/GuardedSubscription.h"
#include "platform/linux/ReadDelay.h"

#include <array>
#include <memory>
#include <optional>

namespace tidemark {

/// Reads the power profile in effect from power-profiles-daemon or one of its replacements
/// (https://upower.pages.freedesktop.org/power-profiles-daemon). Low power mode is on while that
/// profile is "power-saver". Main thread only.
///
/// The daemon sets a profile when it starts, so it is never started from here. Newer daemons have
/// two names at once; only the values under the first of them are used then, so that no change
/// counts twice.
class PowerProfiles final : public LowPowerModeSource {
public:
    PowerProfiles(const MessageBus& bus, std::function<void()> didChange);

    std::optional<bool> isOn() const override;
    /// Whether the daemon has lowered the performance because the machine is too hot. False while
    /// that is not known.
    bool isTooHot() const { return now.isTooHot; }

private:
    /// The daemon under one of its names, which is also that of its interface.
    struct Name {
        Name(PowerProfiles& owner, const MessageBus& bus, const QString& name, const char* path);

        void follow();
        void read();

        PowerProfiles& owner;
        const QString interface;
        const QString path;
        QVariantMap properties;
        ReadDelay delay;
        BusService service;
        std::optional<GuardedSubscription> signal;
    };
    struct State {
        QString profile;
        bool isTooHot = false;

        bool operator==(const State&) const = default;
    };

    void publish();

    const std::function<void()> didChange;
    State now;
    /// The preferred name first.
    std::array<std::unique_ptr<Name>, 2> names;
};

} // namespace tidemark
