#include "platform/linux/ScreenSleepMonitor.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

/// Each has an interface of the same name.
constexpr std::pair<const char*, const char*> saverServices[] = {
    {"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver"},
    {"org.gnome.ScreenSaver", "/org/gnome/ScreenSaver"},
    {"org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver"},
    {"org.mate.ScreenSaver", "/org/mate/ScreenSaver"},
};

const QString displayService = QStringLiteral("org.gnome.Mutter.DisplayConfig");
const QString displayPath = QStringLiteral("/org/gnome/Mutter/DisplayConfig");

/// Absent in an error, and in a message of another form.
std::optional<bool> activeIn(const QDBusMessage& message) {
    const QVariant value = message.arguments().value(0);
    return value.metaType() == QMetaType::fromType<bool>() ? std::optional(value.toBool())
                                                           : std::nullopt;
}

} // namespace

/// One screen saver.
class ScreenSleepMonitor::Saver {
public:
    Saver(ScreenSleepMonitor& owner, const MessageBus& bus, const char* name, const char* path)
        : owner(owner), interface(QLatin1String(name)), path(QLatin1String(path)),
          service(bus, interface, [this] { follow(); }) {}

    /// Absent while no program owns the name, and when the one that owns it can't say.
    std::optional<bool> isActive() const { return active; }

private:
    void follow() {
        set(std::nullopt);
        signal = service.subscribe(path, interface, QStringLiteral("ActiveChanged"),
                                   [this](const QDBusMessage& message) { use(message); });
        service.ask(path, interface, QStringLiteral("GetActive"), {},
                    [this](const QDBusMessage& reply) { use(reply); });
    }
    void use(const QDBusMessage& message) {
        if (const auto isActive = activeIn(message))
            set(isActive);
    }
    void set(std::optional<bool> value) {
        active = value;
        owner.update();
    }

    ScreenSleepMonitor& owner;
    const QString interface;
    const QString path;
    std::optional<bool> active;
    BusService service;
    BusService::Subscription signal;
};

ScreenSleepMonitor::ScreenSleepMonitor(const MessageBus& system, const MessageBus& sessionBus,
                                       NotificationCenter& center)
    : center(center), displays(sessionBus, displayService, [this] { followDisplays(); }),
      session(system, QStringLiteral("LockedHint"), [this](std::optional<bool> locked) {
          isLocked = locked;
          update();
      }) {
    for (const auto& [name, path] : saverServices)
        savers.push_back(std::make_unique<Saver>(*this, sessionBus, name, path));
}

ScreenSleepMonitor::~ScreenSleepMonitor() = default;

void ScreenSleepMonitor::followDisplays() {
    isPowerSaving = false;
    update();
    rereadingDisplays.cancel();
    signalsOfDisplays.reset();
    if (!displays.isThere())
        return;
    const auto readSoon = [this] { rereadingDisplays.request(); };
    signalsOfDisplays.emplace(
        displays, GuardedSubscription::propertiesOf(displayPath, displayService),
        [readSoon](const auto&) { readSoon(); }, readSoon);
    rereadingDisplays.readNow();
}

void ScreenSleepMonitor::readDisplays() {
    displays.readProperty(displayPath, displayService, QStringLiteral("PowerSaveMode"),
                          [this](const QVariant& mode) {
                              rereadingDisplays.ended();
                              // 0 is on, 1 to 3 are ways to be off, −1 is not known.
                              isPowerSaving = mode.toInt() > 0;
                              update();
                          });
}

void ScreenSleepMonitor::update() {
    const bool isSaving =
        std::ranges::any_of(savers, [](const auto& saver) { return saver->isActive() == true; });
    const bool hasSaver = std::ranges::any_of(
        savers, [](const auto& saver) { return saver->isActive().has_value(); });
    const bool next = isSaving || isPowerSaving || (!hasSaver && isLocked == true);
    if (std::exchange(asleep, next) == next)
        return;
    center.post(next ? notification::screensDidSleep : notification::screensDidWake);
}

} // namespace tidemark
