#include "core/presentation/ActivityContextDetails.h"

#include "core/base/Text.h"
#include "core/presentation/InspectionWords.h"

#include <cmath>

namespace tidemark {

namespace {

using inspectionWords::arrow;
using inspectionWords::notReported;
using Kind = SystemActivity::Kind;

/// With at most two decimal places: "59.94", "2".
std::string number(double value) {
    if (!std::isfinite(value) || std::abs(value) > 1e9)
        return notReported;
    std::string text = shortestText(std::round(value * 100) / 100);
    return text.ends_with(".0") ? text.substr(0, text.size() - 2) : text;
}

std::string yesOrNo(std::optional<bool> value, const char* yes, const char* no) {
    return !value ? notReported : *value ? yes : no;
}

std::string enabled(std::optional<bool> value) {
    return yesOrNo(value, "Enabled", "Disabled");
}

std::string percent(std::optional<std::int64_t> percentage) {
    return percentage ? std::to_string(*percentage) + "%" : notReported;
}

class Details {
public:
    Details(const SystemActivity& described, const Calendar& dates)
        : activity(described), calendar(dates) {}

    InspectionSection section() {
        addPower();
        if (activity.networkChange)
            add(*activity.networkChange);
        addWiFi();
        if (activity.bluetoothChange)
            add(*activity.bluetoothChange);
        if (activity.environmentActivity)
            add(*activity.environmentActivity);
        return std::move(made);
    }

private:
    void row(const char* label, std::string value) {
        made.rows.push_back({label, std::move(value)});
    }
    /// A row whose value is a name. Unlike the words of this program, it is not translated.
    void namedRow(const char* label, std::string value) {
        made.rows.push_back({label, std::move(value), true});
    }
    void optionalNamedRow(const char* label, const std::optional<std::string>& value) {
        made.rows.push_back({label, value.value_or(notReported), value.has_value()});
    }
    void optionalRow(const char* label, const std::optional<std::string>& value) {
        row(label, value.value_or(notReported));
    }
    void sentence(const char* text) { made.sentences.emplace_back(text); }

    void addPower() {
        if (activity.lowPowerModeEnabled)
            row("Low Power Mode", enabled(activity.lowPowerModeEnabled));
        if (const auto& session = activity.observedSession)
            add("Observed sleep interval", *session);
        if (const auto& battery = activity.batteryActivity) {
            add(battery->observation);
            if (battery->session)
                add("Observed charging interval", *battery->session);
        } else if (activity.powerObservation) {
            add(*activity.powerObservation);
        }
    }

    void add(const BatteryObservation& observation) {
        row("Battery", percent(observation.percentage));
        row("External power", observation.externalPower ? "Connected" : "Not connected");
    }

    void add(const char* label, const ObservedSession& session) {
        row(label, session.durationLabel());
        if (!session.initialBattery && !session.finalBattery)
            return;
        const auto charge = [](const std::optional<BatteryObservation>& reading) {
            return percent(reading ? reading->percentage : std::nullopt);
        };
        row("Battery across interval",
            charge(session.initialBattery) + arrow + charge(session.finalBattery));
        sentence("Based on paired observations in one monitoring session. Notification times are "
                 "approximate.");
    }

    void add(const NetworkConnectionChange& change) {
        row("Previous connection", change.before.label());
        row("Observed connection", change.after.label());
        row("Low Data Mode", enabled(change.after.constrained));
        row("macOS connection cost flag",
            yesOrNo(change.after.expensive, "Expensive", "Not expensive"));
    }

    void addWiFi() {
        if (activity.kind != Kind::wifiChanged || (!activity.wifiContext && !activity.previousWiFi))
            return;
        const bool connected = activity.wifiConnected.value_or(false);
        const auto nameOf = [](const OptionalShared<WiFiContext>& network) {
            return network ? network->networkName : std::nullopt;
        };
        optionalNamedRow(connected ? "New Wi-Fi network" : "Last connected network",
                         nameOf(activity.wifiContext));
        if (connected && activity.previousWiFi)
            optionalNamedRow("Previous Wi-Fi network", nameOf(activity.previousWiFi));
        if (activity.wifiContext)
            add(*activity.wifiContext);
        if (!connected)
            sentence("Wi-Fi details are from the last connected observation.");
    }

    void add(const WiFiContext& network) {
        std::string channel = network.channel ? std::to_string(*network.channel) : notReported;
        if (network.band)
            channel += " · " + *network.band;
        row("Channel", channel);
        optionalRow("Security Mode", network.security);
        row("Signal at observation",
            network.signalDBM ? std::to_string(*network.signalDBM) + " dBm" : notReported);
        row("Link rate at observation",
            network.linkRateMbps ? number(*network.linkRateMbps) + " Mbps · not internet speed"
                                 : notReported);
    }

    void add(const BluetoothConnectionChange& change) {
        namedRow("Observed item", change.deviceName);
        optionalRow("Device class", change.deviceClass);
        if (change.session)
            add("Observed connection interval", *change.session);
    }

    void add(const EnvironmentActivity& environment) {
        if (activity.kind == Kind::thermalChanged) {
            if (environment.elevatedSince)
                addElevated(*environment.elevatedSince);
            return;
        }
        namedRow("Observed item", environment.deviceName);
        if (environment.display)
            addDisplay(*environment.display, environment.previousDisplay);
        if (environment.volume)
            add(*environment.volume);
    }

    void addElevated(Date since) {
        const ObservedSession session{since, activity.timestamp, {}, {}};
        row("Observed elevated pressure",
            session.durationLabel() + " · since " + inspectionWords::moment(since, calendar));
    }

    void addDisplay(const DisplayContext& display, const std::optional<DisplayContext>& previous) {
        row("Display type", display.builtIn ? "Built-in" : "External or virtual");
        row("Display mode", display.label());
        if (previous)
            row("Previous display mode", previous->label());
        row("Reported refresh rate",
            display.refreshRate ? number(*display.refreshRate) + " Hz" : notReported);
        if (previous && previous->scale != display.scale)
            row("Display scale",
                number(previous->scale) + "×" + arrow + number(display.scale) + "×");
        else
            row("Backing scale", number(display.scale) + "×");
    }

    void add(const VolumeContext& volume) {
        row("Capacity", volume.capacity ? byteString(*volume.capacity) : notReported);
        optionalNamedRow("Format", volume.fileSystem);
        row("Location", yesOrNo(volume.local, "Local", "Network"));
        row("Access", yesOrNo(volume.readOnly, "Read only", "Read and write"));
    }

    const SystemActivity& activity;
    const Calendar& calendar;
    InspectionSection made;
};

} // namespace

InspectionSection activityContextDetails(const SystemActivity& activity, const Calendar& calendar) {
    return Details(activity, calendar).section();
}

} // namespace tidemark
