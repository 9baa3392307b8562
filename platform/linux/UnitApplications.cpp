#include "platform/linux/UnitApplications.h"

#include "app/base/Background.h"
#include "core/base/Error.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <algorithm>

namespace tidemark {

namespace {

const QString unitsService = QStringLiteral("org.freedesktop.systemd1");
const QString unitsPath = QStringLiteral("/org/freedesktop/systemd1");
const QString unitsInterface = QStringLiteral("org.freedesktop.systemd1.Manager");
const QString unitInterface = QStringLiteral("org.freedesktop.systemd1.Unit");

/// One unit in the reply to `ListUnitsByPatterns`, without what is not needed.
struct ListedUnit {
    QString name;
    QString path;
};

std::vector<ListedUnit> unitsIn(const QDBusMessage& reply) {
    const auto list = reply.arguments().value(0).value<QDBusArgument>();
    std::vector<ListedUnit> units;
    if (list.currentSignature() != QLatin1String("a(ssssssouso)"))
        return units;
    for (list.beginArray(); !list.atEnd();) {
        ListedUnit unit;
        QString skipped;
        QDBusObjectPath path;
        list.beginStructure();
        list >> unit.name;
        for (int i = 0; i < 5; ++i)
            list >> skipped;
        list >> path;
        list.endStructure();
        unit.path = path.path();
        units.push_back(std::move(unit));
    }
    list.endArray();
    return units;
}

QString nameIn(const QDBusMessage& signal) {
    return signal.arguments().value(0).toString();
}

std::string instanceOf(const QString& unit) {
    return std::string(UnitApplications::firstWord) + unit.toStdString();
}

/// A unit that is stopping still has the application.
bool isActiveState(const QString& state) {
    return state == QLatin1String("active") || state == QLatin1String("reloading")
           || state == QLatin1String("deactivating");
}

} // namespace

UnitApplications::UnitApplications(Setup setup) : uses(std::move(setup)) {}

UnitApplications::~UnitApplications() {
    UnitApplications::stop();
    tasks.drain();
}

void UnitApplications::start(ApplicationLaunches& of) {
    launches = &of;
    if (!manager)
        manager.emplace(uses.bus(), unitsService, [this] { follow(); });
    else
        follow();
}

void UnitApplications::stop() {
    forget();
    launches = nullptr;
}

bool UnitApplications::isFollowing() const {
    return hasList && tasks.isIdle()
           && std::ranges::all_of(units, [](const auto& unit) { return unit.second.isKnown; });
}

void UnitApplications::forget() {
    hasList = false;
    subscriptions.clear();
    units.clear();
    if (launches)
        launches->forget(firstWord);
}

void UnitApplications::follow() {
    forget();
    if (!launches || !manager->isThere())
        return;
    const auto on = [this](const QString& signal, const BusService::Use& handle) {
        subscriptions.push_back(manager->subscribe(unitsPath, unitsInterface, signal, handle));
    };
    on(QStringLiteral("UnitNew"), [this](const auto& signal) {
        add(nameIn(signal), signal.arguments().value(1).template value<QDBusObjectPath>().path(),
            false);
    });
    on(QStringLiteral("UnitRemoved"), [this](const auto& signal) { remove(nameIn(signal)); });
    // Without this call the manager sends no signals. It holds until the connection ends.
    manager->ask(unitsPath, unitsInterface, QStringLiteral("Subscribe"), {}, [](const auto&) {});
    list();
}

void UnitApplications::list() {
    const QStringList patterns{QStringLiteral("app-*.scope"), QStringLiteral("app-*.service"),
                               QStringLiteral("dbus-:*.service"), QStringLiteral("snap.*.scope")};
    manager->ask(unitsPath, unitsInterface, QStringLiteral("ListUnitsByPatterns"),
                 {QStringList(), patterns}, [this](const auto& reply) { addListed(reply); });
}

void UnitApplications::addListed(const QDBusMessage& reply) {
    if (!launches)
        return;
    for (const auto& [name, path] : unitsIn(reply))
        add(name, path, true);
    hasList = reply.type() == QDBusMessage::ReplyMessage;
}

void UnitApplications::add(const QString& name, const QString& path, bool isListed) {
    auto application = ApplicationUnit::parse(name.toStdString());
    if (!application || units.contains(name))
        return;
    Unit& unit = units[name];
    unit.path = path;
    // No launch is reported for a unit that was there already, or that the session starts by
    // itself.
    unit.isAssumed = isListed || application->isAutostart;
    unit.application = *std::move(application);
    unit.number = ++lastNumber;
    // The manager reports a unit as new even if somebody only asked for it; it may become active
    // later.
    unit.changes = manager->subscribe(
        path, BusService::propertiesInterface, BusService::propertiesChanged,
        [this, name](const auto&) { readState(name); }, unitInterface);
    readState(name);
}

void UnitApplications::readState(const QString& name) {
    const auto unit = units.find(name);
    if (unit == units.end())
        return;
    manager->readProperty(unit->second.path, unitInterface, QStringLiteral("ActiveState"),
                          [this, name, asked = unit->second.number](const QVariant& state) {
                              const auto found = units.find(name);
                              if (found != units.end() && found->second.number == asked)
                                  setState(name, state.toString());
                          });
}

void UnitApplications::setState(const QString& name, const QString& state) {
    Unit& unit = units.at(name);
    unit.isKnown = true;
    const bool isActive = isActiveState(state);
    // A unit that was listed without being active is launched when it becomes active later.
    if (!isActive)
        unit.isAssumed = unit.application.isAutostart;
    if (std::exchange(unit.isActive, isActive) == isActive)
        return;
    if (isActive)
        tasks.start(identify(name, uses.clock.now(), uses.clock.monotonicSeconds()));
    else
        close(name);
}

void UnitApplications::remove(const QString& name) {
    if (units.erase(name) > 0)
        close(name);
}

QCoro::Task<void> UnitApplications::identify(QString name, Date moment, double now) {
    const auto hold = tasks.hold();
    const auto number = units.at(name).number;
    const auto find = [identifiers = units.at(name).application.identifiers,
                       folders = uses.folders](const std::stop_token&) {
        return desktopApplications::find(identifiers, folders());
    };
    std::optional<ApplicationSource::Application> application;
    try {
        application = co_await runInBackground(find, tasks.token());
    } catch (const Error& error) {
        qWarning("An application can't be identified. %s", error.what());
    }
    const auto unit = units.find(name);
    const bool isStill =
        unit != units.end() && unit->second.number == number && unit->second.isActive;
    if (!application || !isStill)
        co_return;
    if (std::exchange(unit->second.isAssumed, false))
        launches->assume(instanceOf(name), *application);
    else
        launches->add(instanceOf(name), *application, moment, now);
}

void UnitApplications::close(const QString& name) {
    launches->remove(instanceOf(name), uses.clock.now());
}

} // namespace tidemark
